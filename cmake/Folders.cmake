# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

# Where everything is installed. Installed files find each other by relative paths, so that the whole may be moved.
if(CMAKE_LIBRARY_ARCHITECTURE AND NOT DEFINED CMAKE_INSTALL_LIBDIR)
    # Also below other prefixes than /usr, where the dynamic linker and pkg-config look, too.
    set(CMAKE_INSTALL_LIBDIR lib/${CMAKE_LIBRARY_ARCHITECTURE} CACHE PATH "Object code libraries")
endif()
include(GNUInstallDirs)

set(QTUTILS_MODULE_FOLDER ${CMAKE_INSTALL_LIBDIR}/qtutils)
set(QTUTILS_DATA_FOLDER ${CMAKE_INSTALL_DATADIR}/qtutils)
set(QTUTILS_PYTHON_FOLDER lib/python3/dist-packages CACHE PATH "Packages for Python")
foreach(sFolder ${CMAKE_INSTALL_BINDIR} ${QTUTILS_MODULE_FOLDER} ${QTUTILS_DATA_FOLDER} ${QTUTILS_PYTHON_FOLDER})
    if(IS_ABSOLUTE ${sFolder})
        message(FATAL_ERROR "${sFolder} must be a folder below the prefix")
    endif()
endforeach()
file(RELATIVE_PATH QTUTILS_BIN_TO_MODULE /${CMAKE_INSTALL_BINDIR} /${QTUTILS_MODULE_FOLDER})
file(RELATIVE_PATH QTUTILS_BIN_TO_DATA /${CMAKE_INSTALL_BINDIR} /${QTUTILS_DATA_FOLDER})
