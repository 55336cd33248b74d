# SPDX-License-Identifier: MIT
# Debian packages, by "cpack" in the build folder: the terminal with its libraries, the plug-in with its
# companion, and what authors of plug-ins need.
set(documents "${CMAKE_INSTALL_DATADIR}/doc")
install(FILES LICENSE DESTINATION "${documents}/vexdesk-desk" RENAME copyright COMPONENT desk)
install(FILES LICENSE DESTINATION "${documents}/tadatamanager" RENAME copyright COMPONENT plugin)
install(FILES LICENSE DESTINATION "${documents}/vexdesk-dev" RENAME copyright COMPONENT development)
install(FILES docs/guide.en.md docs/guide.ru.md docs/store-format.md docs/store-format.ru.md
  CHANGELOG.md
  DESTINATION "${documents}/tadatamanager" COMPONENT plugin)
install(DIRECTORY docs/samples docs/images DESTINATION "${documents}/tadatamanager" COMPONENT plugin)
install(FILES docs/host-contract.md docs/store-format.md DESTINATION "${documents}/vexdesk-dev" COMPONENT development)

set(CPACK_GENERATOR DEB)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_PACKAGE_VENDOR "The TADataManager authors")
set(CPACK_PACKAGE_CONTACT "The TADataManager authors <tadatamanager@localhost>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL desk plugin development)
set(CPACK_COMPONENTS_GROUPING ONE_PER_GROUP)
set(CPACK_DEB_COMPONENT_INSTALL ON)

set(CPACK_DEBIAN_DESK_DESCRIPTION "Trading terminal that is extended by plug-ins
Loads plug-ins, shows the charts of stored price bars, and carries the libraries
that plug-ins are built on.")
set(CPACK_DEBIAN_PLUGIN_DESCRIPTION "Price-bar history for the Vexdesk terminal
Imports bars from text files of any broker, shows, finds and deletes them, and
exports them in any timeframe; with tadata, which does so in scripts.")
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION "Headers of the Vexdesk terminal
What plug-ins are built with: the headers of the contract and the CMake package;
with vexdesk-tour, which shows the terminal at work and leaves pictures.")

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_DESK_PACKAGE_NAME vexdesk-desk)
set(CPACK_DEBIAN_PLUGIN_PACKAGE_NAME tadatamanager)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME vexdesk-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION devel)
# What the libraries of other packages ask for is found out; our own are in no package yet.
set(CPACK_DEBIAN_DESK_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PLUGIN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${CMAKE_LIBRARY_OUTPUT_DIRECTORY}")
set(CPACK_DEBIAN_PLUGIN_PACKAGE_DEPENDS "vexdesk-desk (= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "vexdesk-desk (= ${PROJECT_VERSION}), qt6-base-dev")
set(CPACK_DEBIAN_DESK_PACKAGE_RECOMMENDS "qt6-translations-l10n")
include(CPack)
