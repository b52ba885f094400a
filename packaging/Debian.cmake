# The Debian packages: one for each component of the installation. What a program links becomes its dependency by itself
# (dpkg-shlibdeps); what is loaded by name stands here.
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT ${ZELVO_CONTACT})
set(CPACK_PACKAGING_INSTALL_PREFIX ${CMAKE_INSTALL_PREFIX})
set(CPACK_VERBATIM_VARIABLES ON)

set(CPACK_COMPONENTS_ALL productsale desk dev)
set(CPACK_COMPONENTS_GROUPING ONE_PER_GROUP)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS OFF)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# What a debugger needs goes to files of its own (.ddeb).
set(CPACK_DEBIAN_DEBUGINFO_PACKAGE ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
set(same_version "= ${PROJECT_VERSION}")

set(CPACK_DEBIAN_PRODUCTSALE_PACKAGE_NAME zelvo-productsale)
set(CPACK_DEBIAN_PRODUCTSALE_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_PRODUCTSALE_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PRODUCTSALE_PACKAGE_CONTROL_EXTRA ${CMAKE_CURRENT_SOURCE_DIR}/triggers)
set(CPACK_DEBIAN_PRODUCTSALE_PACKAGE_RECOMMENDS "fonts-nanum, qt6-translations-l10n")
set(CPACK_DEBIAN_PRODUCTSALE_PACKAGE_SUGGESTS "libqt6sql6-odbc, odbc-postgresql")
set(CPACK_COMPONENT_PRODUCTSALE_DESCRIPTION "product sale of an oriental-medicine clinic's desk
Product list, orders, discounts, payments, outstanding money, purchases,
stock, receipts and statistics: the components that a clinic's desk program
loads, and the library that program and components share.")

set(CPACK_DEBIAN_DESK_PACKAGE_NAME zelvo-desk)
set(CPACK_DEBIAN_DESK_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_DESK_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_DESK_PACKAGE_DEPENDS "zelvo-productsale (${same_version})")
set(CPACK_DEBIAN_DESK_PACKAGE_SUGGESTS "postgresql-client")
set(CPACK_COMPONENT_DESK_DESCRIPTION "reception desk of an oriental-medicine clinic
Finds patients and opens their product sale; makes, checks, backs up and
restores the clinic's database.")

set(CPACK_DEBIAN_DEV_PACKAGE_NAME zelvo-productsale-dev)
set(CPACK_DEBIAN_DEV_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEV_PACKAGE_DEPENDS "zelvo-productsale (${same_version}), qt6-base-dev")
set(CPACK_DEBIAN_DEV_PACKAGE_SUGGESTS "qt6-charts-dev, libqt6opengl6-dev")
set(CPACK_COMPONENT_DEV_DESCRIPTION "product sale of an oriental-medicine clinic's desk (development)
Headers and CMake files for a host: a desk program of one's own that loads
the sale and hands it a connection and a patient; and, with qt6-charts-dev,
for reports of a clinic's own.")
include(CPack)
