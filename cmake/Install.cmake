# Where everything goes, and the packages. Components: runtime (library, program), development (headers, link, build
# files) and platform (the substitute for a set's libraries, when the library is linked against it).

install(TARGETS parlo-api EXPORT parlo-api
    LIBRARY COMPONENT runtime NAMELINK_COMPONENT development)
install(DIRECTORY include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/parlo COMPONENT development)
install(FILES platform/ca_platform.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/parlo COMPONENT development)
if(NOT PARLO_PLATFORM_LIBRARIES)
    install(TARGETS parlo-platform-host EXPORT parlo-api LIBRARY COMPONENT platform)
endif()

function(parlo_gzip PARLO_SOURCE PARLO_NAME)  # the same bytes whenever it is done
    execute_process(COMMAND gzip -9cn ${PARLO_SOURCE} OUTPUT_FILE ${CMAKE_CURRENT_BINARY_DIR}/${PARLO_NAME}
        COMMAND_ERROR_IS_FATAL ANY)
endfunction()

include(CMakePackageConfigHelpers)
set(PARLO_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/parlo-api)
install(EXPORT parlo-api NAMESPACE parlo-api:: FILE parlo-api-config.cmake
    DESTINATION ${PARLO_CMAKE_DIR} COMPONENT development)
write_basic_package_version_file(parlo-api-config-version.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/parlo-api-config-version.cmake
    DESTINATION ${PARLO_CMAKE_DIR} COMPONENT development)
string(REGEX REPLACE "[^/]+" ".." PARLO_PC_PREFIX ${CMAKE_INSTALL_LIBDIR}/pkgconfig)  # the folder may be moved
list(TRANSFORM PARLO_PLATFORM_FOLDERS PREPEND -Wl,-rpath-link, OUTPUT_VARIABLE PARLO_PC_FOLDERS)
list(TRANSFORM PARLO_PLATFORM_LIBRARIES REPLACE "^([^-/].*)" "-l\\1" OUTPUT_VARIABLE PARLO_PC_PLATFORM)
if(NOT PARLO_PLATFORM_LIBRARIES)
    set(PARLO_PC_PLATFORM -lparlo-platform-host)
endif()
list(JOIN PARLO_PC_FOLDERS " " PARLO_PC_FOLDERS)
list(JOIN PARLO_PC_PLATFORM " " PARLO_PC_PLATFORM)
configure_file(cmake/parlo-api.pc.in parlo-api.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/parlo-api.pc
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)

if(PARLO_BUILD_TOOLS)
    install(TARGETS parlo RUNTIME COMPONENT runtime)
    parlo_gzip(${CMAKE_SOURCE_DIR}/tools/parlo.1 parlo.1.gz)
    install(FILES ${CMAKE_CURRENT_BINARY_DIR}/parlo.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT runtime)
    install(FILES tools/completion/parlo.bash RENAME parlo
        DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions COMPONENT runtime)
    install(FILES tools/completion/_parlo
        DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions COMPONENT runtime)

    # The schemas are what the program prints.
    if(NOT PARLO_SCHEMAS AND CMAKE_CROSSCOMPILING AND NOT CMAKE_CROSSCOMPILING_EMULATOR)
        message(WARNING "The program cannot run here to write its schemas: set PARLO_SCHEMAS to the folder share/parlo \
of a build that could, or CMAKE_CROSSCOMPILING_EMULATOR; else they are not installed.")
    elseif(NOT PARLO_SCHEMAS)
        set(PARLO_SCHEMAS ${CMAKE_CURRENT_BINARY_DIR})
        list(TRANSFORM PARLO_PLATFORM_FOLDERS PREPEND "--modify;LD_LIBRARY_PATH=path_list_append:"
            OUTPUT_VARIABLE PARLO_RUN)
        set(PARLO_RUN ${CMAKE_COMMAND} -E env ${PARLO_RUN} ${CMAKE_CROSSCOMPILING_EMULATOR} $<TARGET_FILE:parlo>)
        add_custom_command(OUTPUT reply.schema.json search.schema.json conversation.schema.json
            COMMAND ${PARLO_RUN} schema reply > reply.schema.json
            COMMAND ${PARLO_RUN} schema search > search.schema.json
            COMMAND ${PARLO_RUN} schema conversation > conversation.schema.json
            DEPENDS parlo VERBATIM)
        add_custom_target(parlo-schemas ALL DEPENDS reply.schema.json search.schema.json conversation.schema.json)
    endif()
    if(PARLO_SCHEMAS)
        install(FILES ${PARLO_SCHEMAS}/reply.schema.json ${PARLO_SCHEMAS}/search.schema.json
                      ${PARLO_SCHEMAS}/conversation.schema.json
            DESTINATION ${CMAKE_INSTALL_DATADIR}/parlo COMPONENT runtime)
    endif()
endif()

# The revision of a set's packages names it; the applications' packages depend on what they were built against.
set(PARLO_REVISION 1)
if(PARLO_PLATFORM_LIBRARIES)
    string(APPEND PARLO_REVISION +${PARLO_PLATFORM_NAME})
endif()
set(PARLO_PACKAGE_VERSION ${PROJECT_VERSION}-${PARLO_REVISION})
set(CPACK_GENERATOR DEB)
set(CPACK_PROJECT_CONFIG_FILE ${CMAKE_SOURCE_DIR}/cmake/BeforePackaging.cmake)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_SOURCE_DIR}/cmake/InPackages.cmake)
set(CPACK_PARLO_PREFIX ${CMAKE_INSTALL_PREFIX})
set(CPACK_PARLO_LIBRARIES ${PARLO_PLATFORM_LIBRARIES})
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGE_CONTACT "libparlo-api maintainers <maintainers@parlo-api.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "turns a voice server's reply into what the television does next")
set(CPACK_COMPONENTS_ALL runtime development)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE ${PARLO_REVISION})
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS
    ${CMAKE_BINARY_DIR};${CMAKE_BINARY_DIR}/platform/host;${PARLO_PLATFORM_FOLDERS})
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${CMAKE_SOURCE_DIR}/cmake/triggers)
set(CPACK_DEBIAN_PLATFORM_PACKAGE_CONTROL_EXTRA ${CMAKE_SOURCE_DIR}/cmake/triggers)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libparlo-api0.1)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_DEPENDS ${PARLO_PLATFORM_PACKAGES})
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libparlo-api-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
    "libparlo-api0.1 (= ${PARLO_PACKAGE_VERSION}), libjsoncpp-dev, libglib2.0-dev")
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
    set(CPACK_DEBIAN_RUNTIME_PACKAGE_DEPENDS "libparlo-platform-host (= ${PARLO_PACKAGE_VERSION})")
    set(CPACK_COMPONENT_PLATFORM_DESCRIPTION
"The substitute for a television's own libraries, for development machines: it
answers from environment variables and logs to standard error.")
    list(APPEND PARLO_PACKAGES platform:libparlo-platform-host)
endif()

# What Debian wants beside a package's files.
configure_file(cmake/changelog.in changelog @ONLY)
parlo_gzip(${CMAKE_CURRENT_BINARY_DIR}/changelog changelog.Debian.gz)
parlo_gzip(${CMAKE_SOURCE_DIR}/CHANGELOG.md changelog.gz)
foreach(PARLO_PACKAGE ${PARLO_PACKAGES})
    string(REPLACE ":" ";" PARLO_PACKAGE ${PARLO_PACKAGE})
    list(GET PARLO_PACKAGE 0 PARLO_COMPONENT)
    list(GET PARLO_PACKAGE 1 PARLO_NAME)
    install(FILES cmake/copyright ${CMAKE_CURRENT_BINARY_DIR}/changelog.gz ${CMAKE_CURRENT_BINARY_DIR}/changelog.Debian.gz
        DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${PARLO_NAME} COMPONENT ${PARLO_COMPONENT})
    install(FILES cmake/lintian-overrides RENAME ${PARLO_NAME}
        DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides COMPONENT ${PARLO_COMPONENT})
endforeach()
include(CPack)
