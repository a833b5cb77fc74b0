# Installs the entry that starts the app in the tray at login. Session
# managers read autostart entries from $XDG_CONFIG_DIRS/autostart, which is
# /etc/xdg unless the session says otherwise; /usr/local/etc/xdg is read by
# none of GNOME, XFCE or Plasma. So:
# - a packager's absolute configuration directory (Debian's /etc) is used as given;
# - an install under /usr or /usr/local puts the entry in /etc/xdg/autostart;
# - any other prefix (a staging or test prefix) keeps it under the prefix,
#   where no session manager looks.
# The prefix is the one of the install itself (`cmake --install --prefix`
# may differ from the configured one), so the choice is made at install time.
# Kept in its own file so a test can configure it alone.
include(GNUInstallDirs)

set(ZQB_AUTOSTART_SOURCE ${CMAKE_CURRENT_LIST_DIR}/zqb-agent-autostart.desktop)
if(IS_ABSOLUTE "${CMAKE_INSTALL_SYSCONFDIR}")
  install(FILES ${ZQB_AUTOSTART_SOURCE} DESTINATION ${CMAKE_INSTALL_SYSCONFDIR}/xdg/autostart
          RENAME zqb-agent.desktop)
else()
  install(CODE "
    if(CMAKE_INSTALL_PREFIX STREQUAL \"/usr\" OR CMAKE_INSTALL_PREFIX STREQUAL \"/usr/local\")
      set(zqb_autostart_dir /etc/xdg/autostart)
    else()
      set(zqb_autostart_dir \"\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_SYSCONFDIR}/xdg/autostart\")
    endif()
    file(INSTALL DESTINATION \"\${zqb_autostart_dir}\" TYPE FILE
         RENAME zqb-agent.desktop FILES \"${ZQB_AUTOSTART_SOURCE}\")
  ")
endif()
