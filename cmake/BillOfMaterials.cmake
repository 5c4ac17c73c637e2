# The software bill of materials: the dependencies of the build, as an SPDX 2.3 document.
#
# Function  vx_record_dependency(NAME VERSION version LICENSE SPDX-expression HOMEPAGE url
#                                [LIBRARIES glob...] [RELATION relation])
#               records a dependency after find_package. LIBRARIES are its shared libraries that the product links.
#               RELATION is the SPDX relationship, e.g. TEST_DEPENDENCY_OF (DEPENDS_ON).
# Function  vx_write_bill_of_materials()
#               writes the document after all dependencies were recorded. SOURCE_DATE_EPOCH overrides the time in it.
# Variable  VX_BILL_OF_MATERIALS  the file

set(VX_BILL_OF_MATERIALS
    "${PROJECT_BINARY_DIR}/${CMAKE_INSTALL_DATADIR}/doc/verdix-factory-settings/bill-of-materials.spdx.json")

function(vx_record_dependency name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "VERSION;LICENSE;HOMEPAGE;RELATION" "LIBRARIES")
    if(NOT arg_VERSION OR NOT arg_LICENSE OR NOT arg_HOMEPAGE OR arg_UNPARSED_ARGUMENTS)
        message(FATAL_ERROR "vx_record_dependency(${name} ...): VERSION, LICENSE and HOMEPAGE must not be empty; "
                            "VERSION is \"${arg_VERSION}\".")
    endif()
    set(id "SPDXRef-${name}")
    set(comment "")
    if(arg_LIBRARIES)
        list(JOIN arg_LIBRARIES " " libraries)
        set(comment ",\n      \"comment\": \"linked: ${libraries}\"")
    endif()
    set_property(GLOBAL APPEND_STRING PROPERTY VX_BILL_PACKAGES ",
    {
      \"SPDXID\": \"${id}\",
      \"name\": \"${name}\",
      \"versionInfo\": \"${arg_VERSION}\",
      \"licenseConcluded\": \"NOASSERTION\",
      \"licenseDeclared\": \"${arg_LICENSE}\",
      \"copyrightText\": \"NOASSERTION\",
      \"filesAnalyzed\": false,
      \"homepage\": \"${arg_HOMEPAGE}\",
      \"downloadLocation\": \"NOASSERTION\"${comment}
    }")
    if(arg_RELATION MATCHES "_OF$")
        set(relation "\"${id}\", \"relationshipType\": \"${arg_RELATION}\", \"relatedSpdxElement\": \"SPDXRef-product\"")
    else()
        set(relation "\"SPDXRef-product\", \"relationshipType\": \"DEPENDS_ON\", \"relatedSpdxElement\": \"${id}\"")
    endif()
    set_property(GLOBAL APPEND_STRING PROPERTY VX_BILL_RELATIONS ",\n    { \"spdxElementId\": ${relation} }")
endfunction()

function(vx_write_bill_of_materials)
    get_property(packages GLOBAL PROPERTY VX_BILL_PACKAGES)
    get_property(relations GLOBAL PROPERTY VX_BILL_RELATIONS)
    string(TIMESTAMP created "%Y-%m-%dT%H:%M:%SZ" UTC)
    # SPDX demands a unique identifier for each document, so it is derived from the content.
    string(UUID identity NAMESPACE 6ba7b811-9dad-11d1-80b4-00c04fd430c8 TYPE SHA1
           NAME "${PROJECT_VERSION}${created}${packages}${relations}")
    file(WRITE "${VX_BILL_OF_MATERIALS}" "\
{
  \"spdxVersion\": \"SPDX-2.3\",
  \"dataLicense\": \"CC0-1.0\",
  \"SPDXID\": \"SPDXRef-DOCUMENT\",
  \"name\": \"${PROJECT_NAME} ${PROJECT_VERSION}\",
  \"documentNamespace\": \"urn:uuid:${identity}\",
  \"creationInfo\": { \"created\": \"${created}\", \"creators\": [\"Tool: CMake-${CMAKE_VERSION}\"] },
  \"packages\": [
    {
      \"SPDXID\": \"SPDXRef-product\",
      \"name\": \"${PROJECT_NAME}\",
      \"versionInfo\": \"${PROJECT_VERSION}\",
      \"licenseConcluded\": \"NOASSERTION\",
      \"licenseDeclared\": \"${VX_LICENSE}\",
      \"copyrightText\": \"NOASSERTION\",
      \"filesAnalyzed\": false,
      \"downloadLocation\": \"NOASSERTION\"
    }${packages}
  ],
  \"relationships\": [
    { \"spdxElementId\": \"SPDXRef-DOCUMENT\", \"relationshipType\": \"DESCRIBES\", \"relatedSpdxElement\": \"SPDXRef-product\" }${relations}
  ]
}
")
endfunction()

# Dependencies of every program.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    vx_record_dependency(libstdc++ VERSION "${CMAKE_CXX_COMPILER_VERSION}"
                         LICENSE "GPL-3.0-or-later WITH GCC-exception-3.1" HOMEPAGE "https://gcc.gnu.org/"
                         LIBRARIES libstdc++.so.* libgcc_s.so.*)
endif()
if(CMAKE_SYSTEM_NAME STREQUAL "Linux")
    execute_process(COMMAND getconf GNU_LIBC_VERSION OUTPUT_VARIABLE glibc OUTPUT_STRIP_TRAILING_WHITESPACE)
    string(REPLACE "glibc " "" glibc "${glibc}")
    vx_record_dependency(glibc VERSION "${glibc}" LICENSE LGPL-2.1-or-later HOMEPAGE "https://sourceware.org/glibc/"
                         LIBRARIES libc.so.* libm.so.* ld-linux*)
endif()
