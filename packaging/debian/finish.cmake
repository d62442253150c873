# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

# Run by CPack when the files of all components lie in their folders: adds what each Debian package has, and
# compresses what is compressed there.

foreach(sComponent ${CPACK_COMPONENTS_ALL})
    string(TOUPPER ${sComponent} sUpper)
    set(sPackage ${CPACK_DEBIAN_${sUpper}_PACKAGE_NAME})
    set(sFolder ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/${sComponent}/usr)
    if(NOT EXISTS ${sFolder}/share AND NOT EXISTS ${sFolder}/lib)
        message(FATAL_ERROR "no files of ${sComponent} in ${sFolder}")
    endif()

    file(COPY ${CPACK_QTUTILS_FOLDER}/copyright ${CPACK_QTUTILS_CHANGELOG} DESTINATION ${sFolder}/share/doc/${sPackage})
    if(EXISTS ${CPACK_QTUTILS_FOLDER}/${sPackage}.lintian-overrides)
        file(MAKE_DIRECTORY ${sFolder}/share/lintian/overrides)
        file(COPY_FILE ${CPACK_QTUTILS_FOLDER}/${sPackage}.lintian-overrides
            ${sFolder}/share/lintian/overrides/${sPackage})
    endif()

    file(GLOB lCompressed ${sFolder}/share/man/man[0-9]/*.[0-9] ${sFolder}/share/doc/${sPackage}/changelog)
    foreach(sFile ${lCompressed})
        execute_process(COMMAND gzip -9nf ${sFile} COMMAND_ERROR_IS_FATAL ANY)
    endforeach()

    # Neither the umask nor the rights of the sources count.
    execute_process(COMMAND chmod -R u=rwX,go=rX ${sFolder} COMMAND_ERROR_IS_FATAL ANY)
endforeach()
