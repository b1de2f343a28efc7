# SPDX-License-Identifier: MIT
# Compiler settings for code of ours: workbench_target(<target>).

function(workbench_target target)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wconversion
        $<$<BOOL:${SAFETY_WORKBENCH_WERROR}>:-Werror>)
    target_compile_definitions(${target} PRIVATE QT_DEPRECATED_WARNINGS QT_DISABLE_DEPRECATED_BEFORE=0x050F00)
    target_include_directories(${target} PUBLIC ${PROJECT_SOURCE_DIR})
    if(SAFETY_WORKBENCH_SANITIZE)
        target_compile_options(${target} PUBLIC -fsanitize=address,undefined -fno-sanitize-recover=undefined
            -fno-omit-frame-pointer)
        target_link_options(${target} PUBLIC -fsanitize=address,undefined)
    endif()
    if(SAFETY_WORKBENCH_FUZZ)
        target_compile_options(${target} PRIVATE -fsanitize=fuzzer-no-link)
    endif()
endfunction()
