#pragma once

#include <QByteArrayView>

#include <nlohmann/json.hpp>

#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

// JSON text parsed into one value, together with what such a value cannot
// hold: an object keeps only the last copy of a key that the text repeats, so
// the copies before it are kept here, beside the value, for whoever must check
// them too.
struct ParsedJson
{
    using Json = nlohmann::json;

    // Parses the whole text: exactly one value, nothing but whitespace after
    // it, no comments. The parser checks UTF-8 in every string (keys and
    // values alike), rejects unpaired surrogate escapes, raw control
    // characters, NUL bytes and numbers beyond a double, and keeps its nesting
    // on the heap, so hostile nesting costs memory, never stack.
    static std::optional<ParsedJson> parse(QByteArrayView json);

    // The copies of `key` in `object` (an object within `value`) that came
    // before the one `object` holds, first first; empty when the key was not
    // repeated.
    const std::vector<Json> &earlierCopies(const Json &object, const char *key) const;

    Json value;

private:
    // Keyed by the object's member table, which keeps its address when the
    // object is moved into its parent.
    using Place = std::pair<const Json::object_t *, std::string>;
    std::map<Place, std::vector<Json>> repeated;

    friend class ParsedJsonBuilder;
};
