# Language level, warnings, sanitizers and folders of all targets.
#
# Variables  VX_ELF              true if libraries are ELF files, so that options of ELF linkers can be used
#            VX_LIBSTDCXX        true if the C++ standard library is libstdc++
#            VX_ORIGIN           $ORIGIN, or its equivalent, for run paths
#            VX_PROGRAM_TO_LIBS  relative path from the folder of the programs to the folder of the libraries
#            VX_PROGRAM_TO_DATA  relative path from the folder of the programs to the folder of the data
# Function   vx_export_only(TARGET MAP)  restricts the exported symbols of a library to those in a version script

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

# The build folder has the layout of an installation. Programs find their parts by relative paths in both, an
# installation can be moved, and files are installed as they were linked.
include(GNUInstallDirs)
foreach(folder BINDIR LIBDIR INCLUDEDIR DATADIR)
    if(IS_ABSOLUTE "${CMAKE_INSTALL_${folder}}")
        message(FATAL_ERROR "CMAKE_INSTALL_${folder} is \"${CMAKE_INSTALL_${folder}}\"; give it relative to "
                            "CMAKE_INSTALL_PREFIX, so that an installation can be moved.")
    endif()
endforeach()
file(RELATIVE_PATH VX_PROGRAM_TO_LIBS "/${CMAKE_INSTALL_BINDIR}" "/${CMAKE_INSTALL_LIBDIR}")
file(RELATIVE_PATH VX_PROGRAM_TO_DATA "/${CMAKE_INSTALL_BINDIR}" "/${CMAKE_INSTALL_DATADIR}")
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/${CMAKE_INSTALL_BINDIR}")
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/${CMAKE_INSTALL_LIBDIR}")
set(CMAKE_ARCHIVE_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/${CMAKE_INSTALL_LIBDIR}")
set(VX_ORIGIN "$ORIGIN")
if(APPLE)
    set(VX_ORIGIN "@loader_path")
endif()
# Run path of programs. Libraries that need other libraries in the same folder use VX_ORIGIN. Every distinct spelling
# of a folder costs time at each start, because the dynamic linker searches each of them for all libraries.
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
    # Reproducible builds: object files do not depend on the folder. Not for Debug, because debuggers need the real
    # paths.
    add_compile_options("-ffile-prefix-map=${PROJECT_BINARY_DIR}=build" "-ffile-prefix-map=${PROJECT_SOURCE_DIR}=.")
endif()
if(VERDIX_SANITIZE)
    add_compile_options(-fsanitize=${VERDIX_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    add_link_options(-fsanitize=${VERDIX_SANITIZE})
elseif(VX_ELF)
    # Report undefined symbols when a library is linked. Not with sanitizers, because clang links their run-time
    # functions into the executable only.
    add_link_options(LINKER:--no-undefined)
endif()

# Templates of the standard library have default visibility despite the compiler options, so the linker must hide
# them. Without version scripts, they stay visible.
function(vx_export_only target map)
    if(VX_ELF)
        cmake_path(ABSOLUTE_PATH map BASE_DIRECTORY "${CMAKE_CURRENT_SOURCE_DIR}")
        target_link_options(${target} PRIVATE "LINKER:--version-script=${map}")
        set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS "${map}")
    endif()
endfunction()
