# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

# Debian packages, made by "cpack" or packaging/make_packages.sh; docs/packaging.md tells why there are these.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME qtutils)
set(CPACK_PACKAGE_CONTACT "${QTUTILS_MAINTAINER}")
set(CPACK_PACKAGE_VENDOR "The qtutils developers")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "") # would stand before those of the packages
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SOURCE qtutils)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_SOURCE_DIR}/debian/finish.cmake)
set(CPACK_QTUTILS_FOLDER ${CMAKE_CURRENT_SOURCE_DIR}/debian)

# A distribution may add numbers to the version. One behind it makes the packages Debian's, whose changes have that name.
set(sVersion ${PROJECT_VERSION})
set(sChangelog changelog)
if(CPACK_DEBIAN_PACKAGE_EPOCH)
    string(PREPEND sVersion "${CPACK_DEBIAN_PACKAGE_EPOCH}:")
endif()
set(sAtLeast "(>= ${sVersion})")
if(CPACK_DEBIAN_PACKAGE_RELEASE)
    string(APPEND sVersion "-${CPACK_DEBIAN_PACKAGE_RELEASE}")
    set(sChangelog changelog.Debian)
endif()
set(sSame "(= ${sVersion})")
set(CPACK_QTUTILS_CHANGELOG ${CMAKE_CURRENT_BINARY_DIR}/${sChangelog})
string(TIMESTAMP QTUTILS_CHANGELOG_DATE "%a, %d %b %Y %H:%M:%S +0000" UTC)
set(QTUTILS_PACKAGE_VERSION ${sVersion})
qtutils_configure(packaging/debian/changelog.in ${sChangelog})

# qtutils_package(COMPONENT NAME SECTION ARCHITECTURE SUMMARY TEXT [FIELD VALUE]...): a component as a package. The
# architecture "any" is this machine's. Further fields: DEPENDS, RECOMMENDS, SUGGESTS, SHLIBDEPS.
function(qtutils_package sComponent sName sSection sArchitecture sSummary sText)
    string(TOUPPER ${sComponent} sUpper)
    set(sPrefix CPACK_DEBIAN_${sUpper}_PACKAGE)
    set(${sPrefix}_NAME ${sName} PARENT_SCOPE)
    set(${sPrefix}_SECTION ${sSection} PARENT_SCOPE)
    set(CPACK_DEBIAN_${sUpper}_DESCRIPTION "${sSummary}\n${sText}" PARENT_SCOPE)
    if(NOT sArchitecture STREQUAL any)
        set(${sPrefix}_ARCHITECTURE ${sArchitecture} PARENT_SCOPE)
    endif()
    set(lFields ${ARGN})
    while(lFields)
        list(POP_FRONT lFields sField sValue)
        set(${sPrefix}_${sField} "${sValue}" PARENT_SCOPE)
    endwhile()
    set(CPACK_COMPONENTS_ALL ${CPACK_COMPONENTS_ALL} ${sComponent} PARENT_SCOPE)
endfunction()

# qtutils_compile_python(COMPONENT NAME [FOLDER]): has the package's modules compiled when it is installed.
function(qtutils_compile_python sComponent QTUTILS_PACKAGE)
    set(QTUTILS_FOLDER ${ARGN})
    foreach(sScript postinst prerm)
        qtutils_configure(packaging/debian/${sScript}.in scripts/${sComponent}/${sScript})
        list(APPEND lScripts ${CMAKE_CURRENT_BINARY_DIR}/scripts/${sComponent}/${sScript})
    endforeach()
    string(TOUPPER ${sComponent} sUpper)
    set(CPACK_DEBIAN_${sUpper}_PACKAGE_CONTROL_EXTRA "${lScripts}" PARENT_SCOPE)
endfunction()

qtutils_package(qtutils qtutils science any "window over a self-organizing map of documents"
    "A module for host programs that load it at run time and call its methods: a
window with the tree of a map's nodes, a table of the chosen node's documents
and their text. The documents lie in a MariaDB database.
.
The command qtutils-host calls the methods from scripts or a prompt."
    SHLIBDEPS ON
    DEPENDS "libqt6sql6-mysql"
    RECOMMENDS "fonts-dejavu-core, fonts-liberation, firefox-esr | firefox"
    SUGGESTS "mapmaker, mariadb-server")
qtutils_package(mapmaker mapmaker science all "maker of self-organizing maps of texts"
    "Makes a map of the release notes of the installed packages, or of a sample, and
stores it in a MariaDB database for the window of qtutils. It also looks at
such a database and tells what the window would make of it."
    DEPENDS "python3 (>= 3.11), python3-numpy, python3-pymysql, python3-scipy, python3-sklearn, python3-tqdm"
    RECOMMENDS "libopenblas0-pthread"
    SUGGESTS "qtutils, mariadb-server")
qtutils_compile_python(mapmaker mapmaker /usr/${QTUTILS_DATA_FOLDER}/mapmaker)
qtutils_package(doc qtutils-doc doc all "documentation of qtutils"
    "Guides for users of the window and for host programs, pages on the module's
inside, and example programs of the host kit."
    SUGGESTS "qtutils")

if(QTUTILS_BUILD_KIT)
    set(sLibrary libqtutils-nodebrowser0)
    qtutils_package(kit ${sLibrary} libs any "host kit of qtutils: library"
        "Typed functions for programs that show the window of qtutils: errors with
texts, and nothing to keep alive."
        SHLIBDEPS ON
        DEPENDS "qtutils ${sAtLeast}")
    # What others that link the library depend on, and that the dynamic linker is to look for it.
    set(sKitScripts ${CMAKE_CURRENT_BINARY_DIR}/scripts/kit)
    file(CONFIGURE OUTPUT ${sKitScripts}/shlibs
        CONTENT "libqtutils-nodebrowser 0 ${sLibrary} ${sAtLeast}\n")
    file(CONFIGURE OUTPUT ${sKitScripts}/triggers CONTENT "activate-noawait ldconfig\n")
    set(CPACK_DEBIAN_KIT_PACKAGE_CONTROL_EXTRA ${sKitScripts}/shlibs ${sKitScripts}/triggers)
    qtutils_package(dev libqtutils-dev libdevel any "host kit of qtutils: files for C and C++"
        "Headers for C and C++, and what CMake and pkg-config need to build programs
that show the window of qtutils."
        DEPENDS "${sLibrary} ${sSame}")
    qtutils_package(python python3-qtutils python any "host kit of qtutils: package for Python"
        "A class for programs in Python that show the window of qtutils: typed methods,
exceptions with texts, and dates and colours with or without NumPy."
        DEPENDS "python3 (>= 3.11), ${sLibrary} ${sSame}"
        SUGGESTS "python3-numpy")
    qtutils_compile_python(python python3-qtutils)
endif()
if(QTUTILS_BUILD_HOST)
    qtutils_package(demo qtutils-demo science all "demo of qtutils: a map of this machine's release notes"
        "The command qtutils-demo starts a private database server, makes a map of the
release notes of the installed packages and opens it in the window of qtutils."
        DEPENDS "qtutils ${sAtLeast}, mapmaker ${sSame}, mariadb-client-core, mariadb-server-core, x11-utils")
endif()

# What debuggers need of the binaries goes into packages of its own, where there is anything (finish.cmake). CPack's
# CPACK_DEBIAN_DEBUGINFO_PACKAGE gives them neither sums of their files nor a licence.
if(CMAKE_BUILD_TYPE MATCHES "Deb")
    foreach(sComponent qtutils kit)
        string(TOUPPER ${sComponent} sUpper)
        set(sName ${CPACK_DEBIAN_${sUpper}_PACKAGE_NAME})
        if(sName)
            qtutils_package(${sComponent}-symbols ${sName}-dbgsym debug any "debug symbols for ${sName}"
                "Names and lines of the sources, for debuggers that look at a crash."
                DEPENDS "${sName} ${sSame}")
        endif()
    endforeach()
else()
    set(CPACK_STRIP_FILES ON)
endif()

include(CPack)
