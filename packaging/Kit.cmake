# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

# The kit for hosts: the library, what programs in C and C++ are built with, and the package for Python.
include(CMakePackageConfigHelpers)

set(sConfigFolder ${CMAKE_INSTALL_LIBDIR}/cmake/qtutils)
set(sPkgConfigFolder ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
file(RELATIVE_PATH QTUTILS_PKGCONFIG_TO_PREFIX /${sPkgConfigFolder} /)

install(TARGETS qtutils_nodebrowser EXPORT qtutilsTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT kit NAMELINK_COMPONENT dev)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/kit/include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT dev)
install(EXPORT qtutilsTargets NAMESPACE qtutils:: DESTINATION ${sConfigFolder} COMPONENT dev)

configure_package_config_file(qtutilsConfig.cmake.in ${CMAKE_CURRENT_BINARY_DIR}/qtutilsConfig.cmake
    INSTALL_DESTINATION ${sConfigFolder}
    PATH_VARS QTUTILS_MODULE_FOLDER QTUTILS_DATA_FOLDER)
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/qtutilsConfigVersion.cmake
    COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/qtutilsConfig.cmake ${CMAKE_CURRENT_BINARY_DIR}/qtutilsConfigVersion.cmake
    DESTINATION ${sConfigFolder} COMPONENT dev)

qtutils_configure(packaging/qtutils.pc.in qtutils.pc)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/qtutils.pc DESTINATION ${sPkgConfigFolder} COMPONENT dev)
qtutils_install_man(dev qtutils.3)

install(DIRECTORY ${PROJECT_SOURCE_DIR}/kit/python/qtutils DESTINATION ${QTUTILS_PYTHON_FOLDER} COMPONENT python
    FILES_MATCHING PATTERN "*.py" PATTERN py.typed PATTERN __pycache__ EXCLUDE)
# The package finds the library beside itself, wherever the prefix is.
set(sLibrary $<TARGET_SONAME_FILE_NAME:qtutils_nodebrowser>)
file(RELATIVE_PATH sPythonToLibraries /${QTUTILS_PYTHON_FOLDER}/qtutils /${CMAKE_INSTALL_LIBDIR})
string(REGEX REPLACE "/$" "" sPythonToLibraries ${sPythonToLibraries})
install(CODE "file(CREATE_LINK \"${sPythonToLibraries}/${sLibrary}\"
    \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${QTUTILS_PYTHON_FOLDER}/qtutils/${sLibrary}\" SYMBOLIC)" COMPONENT python)
