// The first line as a filter, the others as properties: a filter that is printed is the same filter.

#include <cppmicroservices/LDAPFilter.h>

#include <charconv>
#include <fuzz/fuzzing.hpp>
#include <optional>
#include <stdexcept>
#include <vector>

namespace {

using namespace cppmicroservices;
using fuzz::require;

std::optional<LDAPFilter> parse(const std::string& string)
{
    try {
        return LDAPFilter(string);
    } catch (const std::invalid_argument& error) {
        const bool isWhole = string.find('\0') == std::string::npos;
        require(!isWhole || std::string_view(error.what()).find(" at position ") != std::string_view::npos,
                "a refusal says where", error.what());
        return std::nullopt;
    }
}

template <class Number>
Number numberIn(std::string_view string)
{
    Number number{};
    std::from_chars(string.data(), string.data() + string.size(), number);
    return number;
}

Any valueOf(char type, std::string_view string)
{
    const std::string value(string);
    switch (type) {
    case 'b':
        return value == "true";
    case 'd':
        return numberIn<double>(string);
    case 'i':
        return numberIn<int>(string);
    case 'v':
        return std::vector<Any>{value, numberIn<int>(string), Any(), std::vector<std::string>{value}};
    default:
        return value;
    }
}

/// Lines of a letter for the type, the key, "=" and the value.
AnyMap propertiesIn(fuzz::Bytes& bytes)
{
    AnyMap properties(AnyMap::UNORDERED_MAP_CASEINSENSITIVE_KEYS);
    while (!bytes.empty()) {
        fuzz::Bytes line(bytes.until('\n'));
        const char type = line.empty() ? 's' : line.rest().front();
        const std::string_view key = line.until('=');
        properties.emplace(std::string(key.substr(key.empty() ? 0 : 1)), valueOf(type, line.rest()));
    }
    return properties;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    fuzz::Bytes bytes(data, size);
    const auto filter = parse(std::string(bytes.until('\n')));
    if (!filter) {
        return 0;
    }
    const AnyMap properties = propertiesIn(bytes);
    const std::string string = filter->ToString();
    const auto again = parse(string);
    require(again && again->ToString() == string, "a filter that is printed is a filter", string);
    const bool matches = filter->Match(properties);
    require(again->Match(properties) == matches &&
                again->MatchCase(properties) == filter->MatchCase(properties),
            "a filter that is printed matches the same", string);
    if (const auto negated = parse("(!" + string + ")")) {  // else nested too deep
        require(negated->Match(properties) != matches, "a negation matches the rest", string);
        require(negated->MatchCase(properties) != filter->MatchCase(properties), "case or not", string);
    }
    return 0;
}
