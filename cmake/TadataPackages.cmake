# SPDX-License-Identifier: MIT
# Debian packages, by the target "packages", below packages/ in the build folder: the terminal with its
# libraries and what authors of plug-ins need, at the terminal's version; the plug-in with its companion,
# at its own.
set(documents "${CMAKE_INSTALL_DATADIR}/doc")
install(FILES LICENSE DESTINATION "${documents}/vexdesk-desk" RENAME copyright COMPONENT desk)
install(FILES LICENSE DESTINATION "${documents}/tadatamanager" RENAME copyright COMPONENT plugin)
install(FILES LICENSE DESTINATION "${documents}/vexdesk-dev" RENAME copyright COMPONENT development)
install(FILES docs/guide.en.md docs/guide.ru.md docs/many-machines.md docs/store-format.md docs/store-format.ru.md
  DESTINATION "${documents}/tadatamanager" COMPONENT plugin)
install(DIRECTORY docs/samples docs/images DESTINATION "${documents}/tadatamanager" COMPONENT plugin)
install(FILES docs/host-contract.md docs/store-format.md DESTINATION "${documents}/vexdesk-dev" COMPONENT development)

set(CPACK_GENERATOR DEB)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_PACKAGE_VENDOR "The TADataManager authors")
set(CPACK_PACKAGE_CONTACT "The TADataManager authors <tadatamanager@example.org>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGE_VERSION ${VEXDESK_VERSION})
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_COMPONENTS_ALL desk development)
set(CPACK_COMPONENTS_GROUPING ONE_PER_GROUP)
set(CPACK_DEB_COMPONENT_INSTALL ON)

# The first line of each of these is the summary.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")
set(CPACK_DEBIAN_DESK_DESCRIPTION "Trading terminal that is extended by plug-ins
Loads plug-ins, shows the charts of stored price bars, and carries the
libraries that plug-ins are built on.")
set(CPACK_DEBIAN_PLUGIN_DESCRIPTION "Price-bar history for the Vexdesk terminal
Imports bars from text files of any broker, shows, finds and deletes them, and
exports them in any timeframe; with tadata, which does so in scripts.")
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION "Headers of the Vexdesk terminal
What plug-ins are built with: the headers of the contract and the CMake
package; with vexdesk-tour, which shows the terminal at work and leaves
pictures.")

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
# The libraries keep what they offer for as long as the first number stays.
string(REGEX MATCH "^[0-9]+" major "${VEXDESK_VERSION}")
math(EXPR next_major "${major} + 1")
set(CPACK_DEBIAN_PLUGIN_PACKAGE_DEPENDS
  "vexdesk-desk (>= ${VEXDESK_VERSION}), vexdesk-desk (<< ${next_major})")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
  "vexdesk-desk (= ${VEXDESK_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}), qt6-base-dev")
set(CPACK_DEBIAN_DESK_PACKAGE_RECOMMENDS "qt6-translations-l10n")
# What the distribution wants of documents, and what its checker need not complain of.
set(CPACK_PRE_BUILD_SCRIPTS "${CMAKE_CURRENT_LIST_DIR}/TadataPackageDocuments.cmake")
set(CPACK_TADATA_CHANGELOG "${PROJECT_SOURCE_DIR}/CHANGELOG.md")
set(CPACK_TADATA_RELEASE_DATE "${VEXDESK_RELEASE_DATE}")
set(overrides "${CMAKE_INSTALL_DATADIR}/lintian/overrides")
install(FILES packaging/vexdesk-desk.lintian-overrides DESTINATION "${overrides}" RENAME vexdesk-desk
  COMPONENT desk)
install(FILES packaging/vexdesk-dev.lintian-overrides DESTINATION "${overrides}" RENAME vexdesk-dev
  COMPONENT development)
set(CPACK_DEBIAN_DESK_PACKAGE_CONTROL_EXTRA "${PROJECT_SOURCE_DIR}/packaging/triggers")
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
include(CPack)

file(CONFIGURE OUTPUT "${CMAKE_BINARY_DIR}/CPackPluginConfig.cmake" @ONLY CONTENT [[
include("@CPACK_OUTPUT_CONFIG_FILE@")
set(CPACK_COMPONENTS_ALL plugin)
set(CPACK_PACKAGE_VERSION @PROJECT_VERSION@)
# Counts what is released of one version.
set(CPACK_DEBIAN_PACKAGE_RELEASE 2)
]])
add_custom_target(packages
  COMMAND "${CMAKE_CPACK_COMMAND}" -G DEB -B "${CMAKE_BINARY_DIR}/packages"
  COMMAND "${CMAKE_CPACK_COMMAND}" -G DEB -B "${CMAKE_BINARY_DIR}/packages"
    --config "${CMAKE_BINARY_DIR}/CPackPluginConfig.cmake"
  WORKING_DIRECTORY "${CMAKE_BINARY_DIR}" USES_TERMINAL VERBATIM)
