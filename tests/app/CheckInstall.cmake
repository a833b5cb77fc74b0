# Installs the build into a fresh prefix and checks that a Linux desktop finds
# the app there: the executable, its desktop entry, AppStream data, icon and
# manual page, and the entry that starts it in the tray at login, each valid
# by the desktop's own validators. Then checks that a /usr or /usr/local
# install puts the autostart entry in /etc/xdg/autostart, where session
# managers look.
# Run as: cmake -DBUILD_DIR=... -DPREFIX=... -DSOURCE_DIR=...
#               -DDESKTOP_FILE_VALIDATE=... -DAPPSTREAMCLI=... -P CheckInstall.cmake
foreach(tool DESKTOP_FILE_VALIDATE APPSTREAMCLI)
  if(NOT ${tool})
    message(FATAL_ERROR "${tool} was not found when the build was configured; "
                        "scripts/install-deps.sh test installs it")
  endif()
endforeach()

file(REMOVE_RECURSE "${PREFIX}")
execute_process(COMMAND ${CMAKE_COMMAND} --install "${BUILD_DIR}" --prefix "${PREFIX}"
                RESULT_VARIABLE result OUTPUT_QUIET)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "cmake --install failed: ${result}")
endif()

set(launcher share/applications/zqb-agent.desktop)
set(autostart etc/xdg/autostart/zqb-agent.desktop)
set(metainfo share/metainfo/local.zqb.agent.metainfo.xml)
foreach(path
    bin/zqb-agent-app
    ${launcher}
    ${autostart}
    ${metainfo}
    share/icons/hicolor/scalable/apps/zqb-agent.svg
    share/man/man1/zqb-agent-app.1)
  if(NOT EXISTS "${PREFIX}/${path}")
    message(FATAL_ERROR "not installed: ${path}")
  endif()
endforeach()

function(expect_lines file)
  file(READ "${PREFIX}/${file}" entry)
  foreach(line ${ARGN})
    string(FIND "${entry}" "${line}\n" at)
    if(at EQUAL -1)
      message(FATAL_ERROR "${file} lacks '${line}'")
    endif()
  endforeach()
endfunction()
# The window's X11 class is the app's name: the desktop matches windows to the
# launcher by it.
expect_lines(${launcher} "Name=ZQB Agent" "Exec=zqb-agent-app" "Icon=zqb-agent" "Type=Application"
             "StartupWMClass=ZQB Agent")
# At login: in the tray only, on every desktop that honours the GNOME switch.
expect_lines(${autostart} "Type=Application" "Name=ZQB Agent" "Exec=zqb-agent-app --background"
             "X-GNOME-Autostart-enabled=true")
# Listed, so each desktop's startup settings can switch it off: GNOME's
# "Startup Applications" leaves out entries marked NoDisplay, and an entry
# marked Hidden starts nothing at all.
file(READ "${PREFIX}/${autostart}" entry)
foreach(key NoDisplay Hidden)
  string(FIND "${entry}" "\n${key}=" at)
  if(NOT at EQUAL -1)
    message(FATAL_ERROR "${autostart} sets ${key}, which hides it from the startup settings")
  endif()
endforeach()

foreach(entry ${launcher} ${autostart})
  execute_process(COMMAND ${DESKTOP_FILE_VALIDATE} "${PREFIX}/${entry}"
                  RESULT_VARIABLE result OUTPUT_VARIABLE out ERROR_VARIABLE out)
  if(NOT result EQUAL 0 OR NOT out STREQUAL "")
    message(FATAL_ERROR "desktop-file-validate rejects ${entry}:\n${out}")
  endif()
endforeach()
execute_process(COMMAND ${APPSTREAMCLI} validate --no-net "${PREFIX}/${metainfo}"
                RESULT_VARIABLE result OUTPUT_VARIABLE out ERROR_VARIABLE out)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "appstreamcli rejects ${metainfo}:\n${out}")
endif()

file(READ "${PREFIX}/share/icons/hicolor/scalable/apps/zqb-agent.svg" icon)
string(FIND "${icon}" "<svg" at)
if(at EQUAL -1)
  message(FATAL_ERROR "the installed icon is not an SVG image")
endif()
file(REMOVE_RECURSE "${PREFIX}")

# A /usr or /usr/local install puts the entry in /etc/xdg/autostart, where
# session managers read it: the autostart rule alone, configured with that
# prefix and installed under a staging root.
foreach(systemPrefix /usr /usr/local)
  set(work "${PREFIX}-system")
  file(REMOVE_RECURSE "${work}")
  set(project "${work}/project")
  file(MAKE_DIRECTORY "${project}")
  file(WRITE "${project}/CMakeLists.txt" "cmake_minimum_required(VERSION 3.21)
project(autostart_entry NONE)
include(\"${SOURCE_DIR}/packaging/AutostartEntry.cmake\")
")
  execute_process(COMMAND ${CMAKE_COMMAND} -Wno-dev -S "${project}" -B "${work}/build"
                          -DCMAKE_INSTALL_PREFIX=${systemPrefix}
                  RESULT_VARIABLE result OUTPUT_VARIABLE out ERROR_VARIABLE out)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "configuring the autostart rule failed:\n${out}")
  endif()
  set(ENV{DESTDIR} "${work}/root")
  execute_process(COMMAND ${CMAKE_COMMAND} --install "${work}/build"
                  RESULT_VARIABLE result OUTPUT_QUIET)
  unset(ENV{DESTDIR})
  file(GLOB_RECURSE placed RELATIVE "${work}/root" "${work}/root/*")
  if(NOT result EQUAL 0 OR NOT placed STREQUAL "${autostart}")
    message(FATAL_ERROR "with prefix ${systemPrefix} the autostart entry went to '${placed}', "
                        "not /${autostart}")
  endif()
  file(REMOVE_RECURSE "${work}")
endforeach()
