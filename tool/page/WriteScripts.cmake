# Writes a C++ source with the page's scripts and their hash for the content security policy. The scripts share one
# closure; each is a string literal of its own, because compilers need not support literals longer than 64 KiB.
set(content "#include \"page/page_files.hpp\"\n\n#include <array>\n\nnamespace vx::tool::page {\n\nnamespace {\n\n")
set(opening "\"use strict\";\n(() => {\n")
set(closing "})();\n")
set(script "${opening}")
string(APPEND content "constexpr auto texts = std::to_array<std::string_view>({\nR\"text(${opening})text\",\n")
foreach(file IN LISTS FILES)
    file(READ "${file}" text)
    if(text MATCHES "[)]text\"|</script")
        message(FATAL_ERROR "${file} contains )text\" or </script, which end its C++ string literal or the HTML element")
    endif()
    string(APPEND script "${text}")
    string(APPEND content "R\"text(${text})text\",\n")
endforeach()
string(APPEND script "${closing}")

# The hash in base64, made from groups of 24 bits: 32 bytes are ten groups and two bytes, filled up with zeros.
string(SHA256 hash "${script}")
string(APPEND hash "00")
set(digits "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/")
set(base64 "")
foreach(at RANGE 0 60 6)
    string(SUBSTRING "${hash}" ${at} 6 group)
    foreach(shift IN ITEMS 18 12 6 0)
        math(EXPR digit "(0x${group} >> ${shift}) & 63")
        string(SUBSTRING "${digits}" ${digit} 1 digit)
        string(APPEND base64 "${digit}")
    endforeach()
endforeach()
string(SUBSTRING "${base64}" 0 43 base64)

string(APPEND content "R\"text(${closing})text\"});\n\n}  // namespace\n\n"
    "const std::span<const std::string_view> scripts = texts;\n"
    "const std::string_view scriptHash = \"sha256-${base64}=\";\n\n}  // namespace vx::tool::page\n")
file(WRITE "${OUTPUT}" "${content}")
