# Language level, warnings, sanitizers and folders: the same for every target of the project.
#
# Variables  VX_ELF              true where libraries are ELF files, and so the options of their linkers are known
#            VX_LIBSTDCXX        true where the C++ library is GNU's
#            VX_ORIGIN           how a run path names the folder of the file that it stands in
#            VX_PROGRAM_TO_LIBS  from the folder of the programs to that of the libraries
# Function   vx_export_only(TARGET MAP)  lets the library TARGET give the symbols named in a version script, no others

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
    set(CMAKE_BUILD_TYPE Release CACHE STRING "" FORCE)
endif()

include(CheckCXXSymbolExists)
check_cxx_symbol_exists(__GLIBCXX__ version VX_LIBSTDCXX)
set(VX_ELF FALSE)
if(UNIX AND NOT APPLE)
    set(VX_ELF TRUE)
endif()

# The build folder is laid out as an installation is: what finds its parts in one finds them in the other, wherever
# that was moved to, and files are installed as they were linked.
include(GNUInstallDirs)
foreach(folder BINDIR LIBDIR INCLUDEDIR DATADIR)
    if(IS_ABSOLUTE "${CMAKE_INSTALL_${folder}}")
        message(FATAL_ERROR "CMAKE_INSTALL_${folder} is \"${CMAKE_INSTALL_${folder}}\"; give it relative to "
                            "CMAKE_INSTALL_PREFIX, so that an installation can be moved.")
    endif()
endforeach()
file(RELATIVE_PATH VX_PROGRAM_TO_LIBS "/${CMAKE_INSTALL_BINDIR}" "/${CMAKE_INSTALL_LIBDIR}")
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/${CMAKE_INSTALL_BINDIR}")
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/${CMAKE_INSTALL_LIBDIR}")
set(CMAKE_ARCHIVE_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/${CMAKE_INSTALL_LIBDIR}")
set(VX_ORIGIN "$ORIGIN")
if(APPLE)
    set(VX_ORIGIN "@loader_path")
endif()
# That of programs. Libraries with needs beside them set VX_ORIGIN alone: the loader tells folders apart by their
# spelling, and searches each spelling for every other library on each start. This one is the program's.
set(CMAKE_INSTALL_RPATH "${VX_ORIGIN}/${VX_PROGRAM_TO_LIBS}")
set(CMAKE_BUILD_WITH_INSTALL_RPATH ON)
set(CMAKE_INSTALL_RPATH_USE_LINK_PATH ON)

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER "${CCACHE_PROGRAM}")
endif()

if(MSVC)
    add_compile_options(/W4 /permissive- /utf-8 /Zc:__cplusplus)
else()
    add_compile_options(-Wall -Wextra -Wpedantic -Wconversion -Wshadow)
endif()
if(VERDIX_WARNINGS_AS_ERRORS)
    add_compile_options($<IF:$<BOOL:${MSVC}>,/WX,-Werror>)
endif()
if(NOT MSVC AND NOT CMAKE_BUILD_TYPE STREQUAL "Debug")
    # Equal sources give equal files, wherever they were built. A debugger needs the real folders, so not for it.
    add_compile_options("-ffile-prefix-map=${PROJECT_BINARY_DIR}=build" "-ffile-prefix-map=${PROJECT_SOURCE_DIR}=.")
endif()
if(VERDIX_SANITIZE)
    add_compile_options(-fsanitize=${VERDIX_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    add_link_options(-fsanitize=${VERDIX_SANITIZE})
elseif(VX_ELF)
    # A library that misses a definition fails where it is linked. Not with sanitizers: clang leaves their run-time
    # functions to be found in the executable.
    add_link_options(LINKER:--no-undefined)
endif()

# Templates of the standard library are visible whatever the compiler is told; the linker has the last word. Where
# there are no version scripts, hidden visibility has to do.
function(vx_export_only target map)
    if(VX_ELF)
        cmake_path(ABSOLUTE_PATH map BASE_DIRECTORY "${CMAKE_CURRENT_SOURCE_DIR}")
        target_link_options(${target} PRIVATE "LINKER:--version-script=${map}")
        set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS "${map}")
    endif()
endfunction()
