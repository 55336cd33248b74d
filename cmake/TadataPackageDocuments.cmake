# SPDX-License-Identifier: MIT
# Run by cpack before it makes the packages: gives each its change logs, and packs those and the manual
# pages as the distribution wants them. A plain installation has them as they are.
set(maintainer "${CPACK_PACKAGE_CONTACT}")
set(version "${CPACK_PACKAGE_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}")
execute_process(COMMAND date -u -R -d "${CPACK_TADATA_RELEASE_DATE}"
  OUTPUT_VARIABLE date OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)

set(packed)
foreach(component ${CPACK_COMPONENTS_ALL})
  string(TOUPPER "${component}" upper)
  set(name "${CPACK_DEBIAN_${upper}_PACKAGE_NAME}")
  set(root "${CPACK_TEMPORARY_INSTALL_DIRECTORY}/${component}${CPACK_PACKAGING_INSTALL_PREFIX}")
  set(documents "${root}/share/doc/${name}")
  configure_file("${CPACK_TADATA_CHANGELOG}" "${documents}/changelog" COPYONLY)
  file(WRITE "${documents}/changelog.Debian" "${name} (${version}) unstable; urgency=medium

  * What has changed stands in changelog.gz.

 -- ${maintainer}  ${date}
")
  file(GLOB_RECURSE pages "${root}/share/man/*.1")
  list(APPEND packed "${documents}/changelog" "${documents}/changelog.Debian" ${pages})
endforeach()
execute_process(COMMAND gzip -9nf ${packed} COMMAND_ERROR_IS_FATAL ANY)
