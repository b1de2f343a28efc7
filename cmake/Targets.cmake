# SPDX-License-Identifier: MIT
# Settings of our targets: every one calls workbench_target(), what is installed calls workbench_product() instead.

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

# Text conversions are spelled out: a C string is Latin-1 or UTF-8, and only its author knows which.
function(workbench_product target)
    workbench_target(${target})
    target_compile_definitions(${target} PRIVATE QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_FOREACH
        QT_USE_QSTRINGBUILDER)
endfunction()
