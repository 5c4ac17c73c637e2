# Writes OUTPUT, a C++ source that defines vx::review::locations, from which messages about a setting get the name of
# the file to edit. TREE is the folder with the sources of the tree.
#
# The sources are searched with regular expressions for two kinds of calls:
# - add...(root, "name"), which adds a group or setting to the root;
# - addGroup(desktop, "name"), which adds a group to another group. That group is the parameter of a function in a
#   header of TREE, `void buildX(FactoryGroup& desktop)`; the parameter must have the name of the group.
cmake_minimum_required(VERSION 3.25)

file(GLOB headers "${TREE}/*.hpp")
set(parents root)
foreach(header IN LISTS headers)
    file(STRINGS "${header}" builders REGEX "^void build[A-Za-z]+\\(FactoryGroup& [a-z]+\\)")
    list(TRANSFORM builders REPLACE "^.*FactoryGroup& ([a-z]+).*$" "\\1")
    list(APPEND parents ${builders})
endforeach()
list(REMOVE_DUPLICATES parents)
list(JOIN parents "|" parent)

file(GLOB sources "${TREE}/*.cpp")
set(rows "")
foreach(source IN LISTS sources)
    cmake_path(GET source FILENAME file)
    file(READ "${source}" text)
    string(REGEX MATCHALL "[^A-Za-z]add[A-Za-z]+\\((${parent}), \"[A-Za-z0-9]+\"" calls "${text}")
    foreach(call IN LISTS calls)
        string(REGEX MATCH "add([A-Za-z]+)\\(([a-z]+), \"([A-Za-z0-9]+)\"" unused "${call}")
        if(CMAKE_MATCH_2 STREQUAL "root")
            string(APPEND rows "    {\"verdix.${CMAKE_MATCH_3}\", \"tree/${file}\"},\n")
        elseif(CMAKE_MATCH_1 STREQUAL "Group")
            string(APPEND rows "    {\"verdix.${CMAKE_MATCH_2}.${CMAKE_MATCH_3}\", \"tree/${file}\"},\n")
        endif()
    endforeach()
endforeach()

file(WRITE "${OUTPUT}" "#include <review/source_file.hpp>

namespace vx::review {

constexpr SourceLocation table[] = {
${rows}};
const std::span<const SourceLocation> locations = table;

}  // namespace vx::review
")
