#!/usr/bin/env bash
# Brings every translation file in translations/ up to date with the app's
# texts: adds new English texts (marked unfinished), drops texts the code no
# longer has, keeps every translation already made.
# Usage: scripts/update-translations.sh [language ...]   (e.g. de pt_BR)
set -euo pipefail
cd "$(dirname "$0")/.."
lupdate=/usr/lib/qt6/bin/lupdate
[ -x "$lupdate" ] || lupdate=$(command -v lupdate)
if [ $# -gt 0 ]; then
  files=()
  for language in "$@"; do files+=("translations/zqb-agent_${language}.ts"); done
else
  files=(translations/zqb-agent_*.ts)
fi
for ts in "${files[@]}"; do
  language=$(basename "$ts" .ts); language=${language#zqb-agent_}
  "$lupdate" -locations none -no-obsolete -target-language "$language" \
    src/model src/ui src/app -ts "$ts"
done
