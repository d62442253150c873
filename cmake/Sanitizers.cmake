# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

# QTUTILS_SANITIZE is empty, "address" (with undefined behaviour), "thread", or "fuzzer" (as address, and Clang's
# counters of what is run); it holds for the whole build.
if(QTUTILS_SANITIZE STREQUAL "address")
    add_compile_options(-fsanitize=address,undefined -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
elseif(QTUTILS_SANITIZE STREQUAL "thread")
    add_compile_options(-fsanitize=thread -fno-omit-frame-pointer)
    add_link_options(-fsanitize=thread)
elseif(QTUTILS_SANITIZE STREQUAL "fuzzer")
    add_compile_options(-fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=undefined
        -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
elseif(QTUTILS_SANITIZE)
    message(FATAL_ERROR "QTUTILS_SANITIZE is \"${QTUTILS_SANITIZE}\"; it must be empty, address, thread or fuzzer")
endif()
