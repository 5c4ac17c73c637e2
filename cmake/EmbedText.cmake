# vx_embed_text(TARGET HEADER NAMESPACE NAME=FILE...): compiles text files into the target, each as the string view
# NAMESPACE::NAME that HEADER declares. A file that changes is compiled anew; C++ keeps 16 bits for a literal's length,
# so a file has less than 64 KiB.
function(vx_embed_text target header namespace)
    cmake_path(GET header STEM stem)
    set(source "${CMAKE_CURRENT_BINARY_DIR}/${target}_${stem}.cpp")
    list(TRANSFORM ARGN REPLACE "=" "=${CMAKE_CURRENT_SOURCE_DIR}/" OUTPUT_VARIABLE texts)
    list(TRANSFORM texts REPLACE "^[^=]*=" "" OUTPUT_VARIABLE files)
    add_custom_command(OUTPUT "${source}"
        COMMAND "${CMAKE_COMMAND}" "-DOUTPUT=${source}" "-DHEADER=${header}" "-DNAMESPACE=${namespace}"
                "-DTEXTS=${texts}" -P "${PROJECT_SOURCE_DIR}/cmake/WriteTexts.cmake"
        DEPENDS ${files} "${PROJECT_SOURCE_DIR}/cmake/WriteTexts.cmake"
        COMMENT "Embedding texts into ${target}"
        VERBATIM)
    target_sources(${target} PRIVATE "${source}")
endfunction()
