# Where everything goes, and the packages. Components: runtime (library, program), development (headers, link, build
# files) and platform (the substitute for a set's libraries, when the library is linked against it).

install(TARGETS parlo-api EXPORT parlo-api
    LIBRARY COMPONENT runtime NAMELINK_COMPONENT development)
install(DIRECTORY include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/parlo COMPONENT development)
install(FILES platform/ca_platform.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/parlo COMPONENT development)
if(NOT PARLO_PLATFORM_LIBRARIES)
    install(TARGETS parlo-platform-host EXPORT parlo-api LIBRARY COMPONENT platform)
endif()

include(CMakePackageConfigHelpers)
set(PARLO_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/parlo-api)
install(EXPORT parlo-api NAMESPACE parlo-api:: FILE parlo-api-config.cmake
    DESTINATION ${PARLO_CMAKE_DIR} COMPONENT development)
write_basic_package_version_file(parlo-api-config-version.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/parlo-api-config-version.cmake
    DESTINATION ${PARLO_CMAKE_DIR} COMPONENT development)
file(RELATIVE_PATH PARLO_PC_PREFIX /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)  # the folder may be moved
configure_file(cmake/parlo-api.pc.in parlo-api.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/parlo-api.pc
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)

if(PARLO_BUILD_TOOLS)
    install(TARGETS parlo RUNTIME COMPONENT runtime)
    file(ARCHIVE_CREATE OUTPUT ${CMAKE_CURRENT_BINARY_DIR}/parlo.1.gz PATHS ${CMAKE_SOURCE_DIR}/tools/parlo.1
         FORMAT raw COMPRESSION GZip COMPRESSION_LEVEL 9)
    install(FILES ${CMAKE_CURRENT_BINARY_DIR}/parlo.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT runtime)
    install(FILES tools/completion/parlo.bash RENAME parlo
        DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions COMPONENT runtime)
    install(FILES tools/completion/_parlo
        DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions COMPONENT runtime)

    # The schemas are what the program prints, where the build can run it.
    if(NOT CMAKE_CROSSCOMPILING AND NOT PARLO_PLATFORM_LIBRARIES)
        add_custom_command(OUTPUT reply.schema.json search.schema.json conversation.schema.json
            COMMAND parlo schema reply > reply.schema.json
            COMMAND parlo schema search > search.schema.json
            COMMAND parlo schema conversation > conversation.schema.json
            DEPENDS parlo VERBATIM)
        add_custom_target(parlo-schemas ALL DEPENDS reply.schema.json search.schema.json conversation.schema.json)
        install(FILES ${CMAKE_CURRENT_BINARY_DIR}/reply.schema.json ${CMAKE_CURRENT_BINARY_DIR}/search.schema.json
                      ${CMAKE_CURRENT_BINARY_DIR}/conversation.schema.json
            DESTINATION ${CMAKE_INSTALL_DATADIR}/parlo COMPONENT runtime)
    endif()
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_PROJECT_CONFIG_FILE ${CMAKE_SOURCE_DIR}/cmake/BeforePackaging.cmake)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGE_CONTACT "libparlo-api maintainers <maintainers@parlo-api.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "turns a voice server's reply into what the television does next")
set(CPACK_COMPONENTS_ALL runtime development)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_BINARY_DIR};${CMAKE_BINARY_DIR}/platform/host)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${CMAKE_SOURCE_DIR}/cmake/triggers)
set(CPACK_DEBIAN_PLATFORM_PACKAGE_CONTROL_EXTRA ${CMAKE_SOURCE_DIR}/cmake/triggers)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libparlo-api0.1)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libparlo-api-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "libparlo-api0.1 (= ${PROJECT_VERSION})")
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION
"The library that a television's voice application turns server replies into
action records with, and the program parlo, which shows what it makes of one.")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION
"Headers and build files for applications that use the library.")
set(PARLO_PACKAGES runtime:libparlo-api0.1 development:libparlo-api-dev)
if(NOT PARLO_PLATFORM_LIBRARIES)
    list(APPEND CPACK_COMPONENTS_ALL platform)
    set(CPACK_DEBIAN_PLATFORM_PACKAGE_NAME libparlo-platform-host)
    set(CPACK_DEBIAN_PLATFORM_PACKAGE_SECTION libs)
    set(CPACK_DEBIAN_RUNTIME_PACKAGE_DEPENDS "libparlo-platform-host (= ${PROJECT_VERSION})")
    set(CPACK_COMPONENT_PLATFORM_DESCRIPTION
"The substitute for a television's own libraries, for development machines: it
answers from environment variables and logs to standard error.")
    list(APPEND PARLO_PACKAGES platform:libparlo-platform-host)
endif()

# What Debian wants beside a package's files.
file(ARCHIVE_CREATE OUTPUT ${CMAKE_CURRENT_BINARY_DIR}/changelog.gz PATHS ${CMAKE_SOURCE_DIR}/CHANGELOG.md
     FORMAT raw COMPRESSION GZip COMPRESSION_LEVEL 9)
foreach(PARLO_PACKAGE ${PARLO_PACKAGES})
    string(REPLACE ":" ";" PARLO_PACKAGE ${PARLO_PACKAGE})
    list(GET PARLO_PACKAGE 0 PARLO_COMPONENT)
    list(GET PARLO_PACKAGE 1 PARLO_NAME)
    install(FILES cmake/copyright ${CMAKE_CURRENT_BINARY_DIR}/changelog.gz
        DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${PARLO_NAME} COMPONENT ${PARLO_COMPONENT})
endforeach()
include(CPack)
