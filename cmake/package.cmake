# What is installed, and the packages made of it: for Debian one to install, for Windows an archive to unpack. The
# libraries lie beside the program, where it looks for them and where they can be replaced.
set(program_targets tamtest hoxitam1 OvkTiff)

if(WIN32)
    set(program_folder .)
    set(data_folder .)
    set(doc_folder .)
else()
    set(program_folder lib/tamtest)
    set(data_folder share/tamtest)
    set(doc_folder share/doc/tamtest)
    # The program on everybody's path; it finds its libraries where the link leads.
    install(CODE "file(MAKE_DIRECTORY \$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/bin)
                  file(CREATE_LINK ../${program_folder}/tamtest
                       \$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/bin/tamtest SYMBOLIC)")
endif()

install(TARGETS ${program_targets}
        RUNTIME DESTINATION ${program_folder}
        LIBRARY DESTINATION ${program_folder}
        ARCHIVE DESTINATION ${program_folder} EXCLUDE_FROM_ALL)
install(DIRECTORY samples scenarios DESTINATION ${data_folder})
install(FILES README.md DESTINATION ${doc_folder})
install(DIRECTORY docs DESTINATION ${doc_folder})

set(CPACK_PACKAGE_NAME tamtest)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "TamTest developers")
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)
if(WIN32)
    set(CPACK_GENERATOR ZIP)
else()
    set(CPACK_GENERATOR DEB)
    set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
    set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
    set(CPACK_DEBIAN_PACKAGE_SECTION electronics)
    set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
    set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
endif()
include(CPack)
