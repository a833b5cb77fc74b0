# Installs the build into a fresh prefix and checks that a Linux desktop finds
# the app there: the executable, its desktop entry, AppStream data and icon.
# Run as: cmake -DBUILD_DIR=... -DPREFIX=... -P CheckInstall.cmake
file(REMOVE_RECURSE "${PREFIX}")
execute_process(COMMAND ${CMAKE_COMMAND} --install "${BUILD_DIR}" --prefix "${PREFIX}"
                RESULT_VARIABLE result OUTPUT_QUIET)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "cmake --install failed: ${result}")
endif()

foreach(path
    bin/zqb-agent-app
    share/applications/zqb-agent.desktop
    share/metainfo/local.zqb.agent.metainfo.xml
    share/icons/hicolor/scalable/apps/zqb-agent.svg)
  if(NOT EXISTS "${PREFIX}/${path}")
    message(FATAL_ERROR "not installed: ${path}")
  endif()
endforeach()

file(READ "${PREFIX}/share/applications/zqb-agent.desktop" entry)
foreach(line "Name=ZQB Agent" "Exec=zqb-agent-app" "Icon=zqb-agent" "Type=Application")
  string(FIND "${entry}" "${line}\n" at)
  if(at EQUAL -1)
    message(FATAL_ERROR "desktop entry lacks '${line}'")
  endif()
endforeach()

file(READ "${PREFIX}/share/icons/hicolor/scalable/apps/zqb-agent.svg" icon)
string(FIND "${icon}" "<svg" at)
if(at EQUAL -1)
  message(FATAL_ERROR "the installed icon is not an SVG image")
endif()
file(REMOVE_RECURSE "${PREFIX}")
