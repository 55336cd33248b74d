# SPDX-License-Identifier: MIT
# Where the parts of an installed terminal are, relative to the installation prefix. Programs lie in a
# folder of their own, with ".installed" beside them, the mark of an installation for all users; links
# in the folder for programs lead to them.
set(VEXDESK_PROGRAM_DIR "${CMAKE_INSTALL_LIBDIR}/vexdesk")
set(VEXDESK_PLUGIN_DIR "${VEXDESK_PROGRAM_DIR}/plugins")
set(VEXDESK_GUIDE_DIR "${CMAKE_INSTALL_DATADIR}/vexdesk/docs")
set(VEXDESK_TRANSLATION_DIR "${CMAKE_INSTALL_DATADIR}/vexdesk/translations")
