# Installs the entry that starts the app in the tray at login. Session
# managers read autostart entries from $XDG_CONFIG_DIRS/autostart, which is
# /etc/xdg for a system install. GNUInstallDirs knows that a /usr (or /opt/...)
# prefix keeps its configuration outside the prefix, and a packager may give an
# absolute directory: only then is the absolute directory used. Elsewhere it
# stays relative, so `cmake --install --prefix` places the entry under the
# prefix it is given. Kept in its own file so a test can configure it alone.
include(GNUInstallDirs)

if(IS_ABSOLUTE "${CMAKE_INSTALL_SYSCONFDIR}"
   OR NOT CMAKE_INSTALL_FULL_SYSCONFDIR STREQUAL "${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_SYSCONFDIR}")
  set(ZQB_AUTOSTART_DIR "${CMAKE_INSTALL_FULL_SYSCONFDIR}/xdg/autostart")
else()
  set(ZQB_AUTOSTART_DIR "${CMAKE_INSTALL_SYSCONFDIR}/xdg/autostart")
endif()

install(FILES ${CMAKE_CURRENT_LIST_DIR}/zqb-agent-autostart.desktop
        DESTINATION ${ZQB_AUTOSTART_DIR} RENAME zqb-agent.desktop)
