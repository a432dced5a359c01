# Read by cpack before it makes a package.

# Without dpkg-shlibdeps cpack would only warn, and make packages that name none of the libraries they need.
foreach(PARLO_PROGRAM dpkg-shlibdeps file)
    find_program(PARLO_PROGRAM_PATH ${PARLO_PROGRAM} NO_CACHE)
    if(NOT PARLO_PROGRAM_PATH)
        message(FATAL_ERROR "The packages need ${PARLO_PROGRAM}; scripts/install-packages package installs it.")
    endif()
    unset(PARLO_PROGRAM_PATH)
endforeach()

if(CPACK_PARLO_LIBRARIES AND NOT CPACK_DEBIAN_RUNTIME_PACKAGE_DEPENDS)
    message(FATAL_ERROR "A set's packages depend on those of its own libraries: name them in PARLO_PLATFORM_PACKAGES.")
endif()
if(NOT CPACK_PARLO_PREFIX STREQUAL CPACK_PACKAGING_INSTALL_PREFIX)
    message(WARNING "Configure with -DCMAKE_INSTALL_PREFIX=/usr: else the library is not in its architecture's folder.")
endif()

# The warning for developers is that the substitute has no soname. It needs none: it is installed with the library of
# the same version, which asks for it by its only name.
set(CMAKE_SUPPRESS_DEVELOPER_WARNINGS TRUE)
