#pragma once

#include "AgentSettings.h"
#include "AgentUIStatus.h"
#include "TransferPolicy.h"

#include <QByteArrayView>

// Reads one record straight from JSON text, in a single streaming pass of
// nlohmann/json's SAX parser (no intermediate tree). Strict: the text holds exactly one object;
// every required key is present with a non-null value of its type; integers are JSON integers (no
// fraction, no exponent) that fit their field's width; booleans are only true or false; optional
// keys may be missing or null; unknown keys are ignored at every level. When a key occurs more than
// once, every occurrence must be valid and the last one counts. A number beyond the range of a
// double (such as 1e400) fails even under an unknown key. Returns false on any breach; `record` is
// then unspecified.
namespace StrictReader {

bool read(QByteArrayView json, AgentUIStatus &record);
bool read(QByteArrayView json, AgentSettings &record);
bool read(QByteArrayView json, TransferPolicy &record);

} // namespace StrictReader
