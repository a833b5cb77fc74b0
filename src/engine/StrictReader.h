#pragma once

#include "AgentSettings.h"
#include "AgentUIStatus.h"
#include "TransferPolicy.h"

#include <QByteArrayView>

// Reads one record from JSON text. Strict: the text holds exactly one object;
// every required key is present with a non-null value of its type; integers
// are JSON integers (no fraction, no exponent) that fit their field's width;
// booleans are only true or false; optional keys may be missing or null;
// unknown keys are ignored at every level, but their values must still be
// valid JSON (a number beyond the range of a double, such as 1e400, fails);
// a key repeated within one object must be valid in every copy, and the last
// copy counts. Returns false on any breach; `record` is then unspecified.
namespace StrictReader {

bool read(QByteArrayView json, AgentUIStatus &record);
bool read(QByteArrayView json, AgentSettings &record);
bool read(QByteArrayView json, TransferPolicy &record);

} // namespace StrictReader
