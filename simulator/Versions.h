#pragma once

#include <QString>

// Dotted version numbers as the service advertises them ("2.4.1", "3.0.0-rc1").
namespace Versions {

// One to four dot-separated numbers, optionally followed by "-" and a
// pre-release label of letters, digits and dots; at most 32 characters.
bool isValid(const QString &version);

// Negative, zero or positive as `a` is older than, equal to or newer than `b`.
// A pre-release sorts before the release of the same numbers.
int compare(const QString &a, const QString &b);

} // namespace Versions
