# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

# The compiler's and the linker's protections, as Debian's packages have them; they hold for the whole build. A build
# with a sanitizer goes without: that sees more, and knows functions of the C library by their plain names only.
option(QTUTILS_HARDENING "Build with the protections against memory errors" ON)
if(NOT QTUTILS_HARDENING OR QTUTILS_SANITIZE)
    return()
endif()

add_compile_options(-fstack-protector-strong -fstack-clash-protection -Wformat -Werror=format-security)
if(CMAKE_SYSTEM_PROCESSOR MATCHES "^(x86_64|AMD64)$")
    add_compile_options(-fcf-protection)
endif()
add_link_options(LINKER:-z,relro,-z,now,-z,noexecstack)

# The C library checks sizes only in optimised code, and warns otherwise. A build type and the flags together decide
# whether a language is optimised, so the compiler is asked, each time anew.
include(CheckSourceCompiles)
set(CMAKE_TRY_COMPILE_CONFIGURATION ${CMAKE_BUILD_TYPE})
foreach(sLanguage C CXX)
    unset(QTUTILS_OPTIMIZED_${sLanguage} CACHE)
    check_source_compiles(${sLanguage} "
        #ifndef __OPTIMIZE__
        #error
        #endif
        int main(void) { return 0; }"
        QTUTILS_OPTIMIZED_${sLanguage})
    if(QTUTILS_OPTIMIZED_${sLanguage})
        add_compile_options($<$<COMPILE_LANGUAGE:${sLanguage}>:-U_FORTIFY_SOURCE>
            $<$<COMPILE_LANGUAGE:${sLanguage}>:-D_FORTIFY_SOURCE=2>)
    endif()
endforeach()

# Without this check the linker's default would decide about programs.
include(CheckPIESupported)
check_pie_supported(LANGUAGES C CXX)
