# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

# Run by CPack when the files of all components lie in their folders: adds what each Debian package has, and
# compresses what is compressed there.

# The place of a binary's debug symbols below /usr: debuggers know it by the number that the linker gave to the build.
function(find_place_of_symbols sBinary sResult)
    execute_process(COMMAND readelf --notes ${sBinary} OUTPUT_VARIABLE sNotes COMMAND_ERROR_IS_FATAL ANY)
    if(NOT sNotes MATCHES "Build ID: ([0-9a-f][0-9a-f])([0-9a-f]+)")
        message(FATAL_ERROR "${sBinary} has no build ID")
    endif()
    set(${sResult} lib/debug/.build-id/${CMAKE_MATCH_1}/${CMAKE_MATCH_2}.debug PARENT_SCOPE)
endfunction()

# Moves the debug symbols of a folder's binaries into another one.
function(move_symbols sFrom sTo)
    file(GLOB_RECURSE lBinaries ${sFrom}/bin/* ${sFrom}/lib/*)
    foreach(sBinary ${lBinaries})
        if(NOT IS_SYMLINK ${sBinary})
            find_place_of_symbols(${sBinary} sPlace)
            cmake_path(GET sPlace PARENT_PATH sFolder)
            file(MAKE_DIRECTORY ${sTo}/${sFolder})
            execute_process(COMMAND objcopy --only-keep-debug --compress-debug-sections ${sBinary} ${sTo}/${sPlace}
                COMMAND_ERROR_IS_FATAL ANY)
            execute_process(COMMAND chmod -x ${sTo}/${sPlace} COMMAND_ERROR_IS_FATAL ANY)
            execute_process(COMMAND strip ${sBinary} COMMAND_ERROR_IS_FATAL ANY)
        endif()
    endforeach()
endfunction()

foreach(sComponent ${CPACK_COMPONENTS_ALL})
    if(sComponent MATCHES "^(.*)-symbols$")
        set(sFolder ${CPACK_TEMPORARY_INSTALL_DIRECTORY})
        move_symbols(${sFolder}/${CMAKE_MATCH_1}/usr ${sFolder}/${sComponent}/usr)
    endif()
endforeach()

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

    file(GLOB lCompressed ${sFolder}/share/man/man[0-9]/*.[0-9] ${sFolder}/share/doc/${sPackage}/changelog*)
    foreach(sFile ${lCompressed})
        execute_process(COMMAND gzip -9nf ${sFile} COMMAND_ERROR_IS_FATAL ANY)
    endforeach()

    # Neither the umask nor the rights of the sources count.
    execute_process(COMMAND chmod -R u=rwX,go=rX ${sFolder} COMMAND_ERROR_IS_FATAL ANY)
endforeach()
