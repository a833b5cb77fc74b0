# Installs the entry that starts the app in the tray at login. Session
# managers read autostart entries from $XDG_CONFIG_DIRS/autostart, which is
# /etc/xdg unless the session says otherwise; /usr/local/etc/xdg is read by
# none of GNOME, XFCE or Plasma. So a system install, under /usr (whose
# configuration GNUInstallDirs already keeps in /etc) or /usr/local, puts the
# entry in /etc/xdg/autostart, and a packager may give an absolute directory.
# Any other prefix (a staging or test prefix) keeps it under the prefix, where
# no session manager looks. Kept in its own file so a test can configure it
# alone.
include(GNUInstallDirs)

if(IS_ABSOLUTE "${CMAKE_INSTALL_SYSCONFDIR}"
   OR NOT CMAKE_INSTALL_FULL_SYSCONFDIR STREQUAL "${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_SYSCONFDIR}")
  set(ZQB_AUTOSTART_DIR "${CMAKE_INSTALL_FULL_SYSCONFDIR}/xdg/autostart")
elseif(CMAKE_INSTALL_PREFIX STREQUAL "/usr/local")
  set(ZQB_AUTOSTART_DIR "/etc/xdg/autostart")
else()
  set(ZQB_AUTOSTART_DIR "${CMAKE_INSTALL_SYSCONFDIR}/xdg/autostart")
endif()

install(FILES ${CMAKE_CURRENT_LIST_DIR}/zqb-agent-autostart.desktop
        DESTINATION ${ZQB_AUTOSTART_DIR} RENAME zqb-agent.desktop)
