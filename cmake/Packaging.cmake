# `make package`: one Debian package with everything `cmake --install` puts in place (library,
# headers, CMake and pkg-config files, the orvane tool, the samples).
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME orvane)
set(CPACK_PACKAGE_VENDOR "Orvane")
set(CPACK_PACKAGE_CONTACT "Orvane maintainers <maintainers@orvane.invalid>")
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "${CPACK_PACKAGE_CONTACT}")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
# CPack puts the summary first and indents every line of the description itself.
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
    "liborvane.so loads, edits and saves IFC property-set and quantity-set XML
documents for host CAD programs. The package holds the library, its headers,
CMake (find_package(Orvane)) and pkg-config (orvane) files, the orvane
command-line tool and sample documents, among them the standard IFC4 sets
(IFC4 property set definitions © buildingSMART International).")
set(CPACK_DEBIAN_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
# The dependencies come from what the binaries link; without dpkg-shlibdeps, a fixed list.
find_program(ORVANE_DPKG_SHLIBDEPS dpkg-shlibdeps)
if(ORVANE_DPKG_SHLIBDEPS)
  set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
  # bin/orvane links lib/liborvane.so from this same package.
  set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_BINARY_DIR}/api)
else()
  set(CPACK_DEBIAN_PACKAGE_DEPENDS "libc6, libstdc++6, libgcc-s1, libtinyxml2-9")
endif()
include(CPack)
