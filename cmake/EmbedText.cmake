# vx_embed_text(TARGET HEADER NAMESPACE NAME=FILE...): compiles text files into the target, each as the constant
# std::string_view NAMESPACE::NAME, which HEADER declares. A file must be smaller than 64 KiB, because compilers need
# not support longer string literals.
function(vx_embed_text target header namespace)
    cmake_path(GET header STEM stem)
    set(source "${CMAKE_CURRENT_BINARY_DIR}/${target}_${stem}.cpp")
    list(TRANSFORM ARGN REPLACE "=" "=${CMAKE_CURRENT_SOURCE_DIR}/" OUTPUT_VARIABLE named_files)
    list(TRANSFORM named_files REPLACE "^[^=]*=" "" OUTPUT_VARIABLE files)
    add_custom_command(OUTPUT "${source}"
        COMMAND "${CMAKE_COMMAND}" "-DOUTPUT=${source}" "-DHEADER=${header}" "-DNAMESPACE=${namespace}"
                "-DNAMED_FILES=${named_files}" -P "${PROJECT_SOURCE_DIR}/cmake/WriteTexts.cmake"
        DEPENDS ${files} "${PROJECT_SOURCE_DIR}/cmake/WriteTexts.cmake"
        COMMENT "Embedding text files into ${target}"
        VERBATIM)
    target_sources(${target} PRIVATE "${source}")
endfunction()
