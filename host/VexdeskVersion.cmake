# SPDX-License-Identifier: MIT
# The terminal's version, and the day of its release. The plug-in's is its own: see the CMakeLists.txt
# beside host/.
set(VEXDESK_VERSION 1.1.0)
set(VEXDESK_RELEASE_DATE 2026-11-21)
