#!/bin/sh
# Run by the notification server for every notification it shows: appends
# "appname<TAB>summary<TAB>body" to the file named by ZQB_E2E_NOTIFY_LOG.
printf '%s\t%s\t%s\n' "${DUNST_APP_NAME:-$1}" "${DUNST_SUMMARY:-$2}" "${DUNST_BODY:-$3}" \
  >> "$ZQB_E2E_NOTIFY_LOG"
