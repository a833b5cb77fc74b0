#include "ParsedJson.h"

#include <cstdint>
#include <utility>

// Builds the value from the parser's events as nlohmann/json's own parse()
// does, except that a repeated key's earlier copy is moved aside instead of
// being overwritten.
class ParsedJsonBuilder final : public nlohmann::json_sax<ParsedJson::Json>
{
public:
    using Json = ParsedJson::Json;

    explicit ParsedJsonBuilder(ParsedJson &parsed) : parsed(parsed) {}

    bool null() override { return add(nullptr); }
    bool boolean(bool value) override { return add(value); }
    bool number_integer(std::int64_t value) override { return add(value); }
    bool number_unsigned(std::uint64_t value) override { return add(value); }
    bool number_float(double value, const std::string &) override { return add(value); }
    bool string(std::string &value) override { return add(std::move(value)); }
    bool binary(Json::binary_t &) override { return false; } // JSON text has none

    bool start_object(std::size_t) override
    {
        open.push_back(place(Json::object()));
        return true;
    }

    bool key(std::string &key) override
    {
        auto &members = open.back()->get_ref<Json::object_t &>();
        const auto [member, isNew] = members.try_emplace(key);
        if (!isNew)
            parsed.repeated[{&members, key}].push_back(std::exchange(member->second, nullptr));
        slot = &member->second;
        return true;
    }

    bool end_object() override
    {
        open.pop_back();
        return true;
    }

    bool start_array(std::size_t) override
    {
        open.push_back(place(Json::array()));
        return true;
    }

    bool end_array() override
    {
        open.pop_back();
        return true;
    }

    bool parse_error(std::size_t, const std::string &, const nlohmann::detail::exception &) override
    {
        return false;
    }

private:
    bool add(Json value)
    {
        place(std::move(value));
        return true;
    }

    // Puts a new value where the text has it: the whole document, the next
    // element of the array being read, or the value of the key just read.
    Json *place(Json value)
    {
        if (open.empty()) {
            parsed.value = std::move(value);
            return &parsed.value;
        }
        Json &container = *open.back();
        if (container.is_array()) {
            container.push_back(std::move(value));
            return &container.back();
        }
        *slot = std::move(value);
        return slot;
    }

    ParsedJson &parsed;
    std::vector<Json *> open; // the objects and arrays being filled, innermost last
    Json *slot = nullptr;
};

std::optional<ParsedJson> ParsedJson::parse(QByteArrayView json)
{
    // The lexer takes a NUL byte for the end of the input, so a document
    // followed by one (and anything after it) would read. A raw NUL is never
    // valid JSON text, in a string or between values.
    if (json.contains('\0'))
        return std::nullopt;
    const char *begin = json.data();
    const char *end = begin + json.size();
    if (!begin) // an empty view may have no data at all
        begin = end = "";

    ParsedJson parsed;
    ParsedJsonBuilder builder(parsed);
    if (!Json::sax_parse(begin, end, &builder, nlohmann::json::input_format_t::json,
                         /*strict=*/true, /*ignore_comments=*/false))
        return std::nullopt;
    return parsed;
}

const std::vector<ParsedJson::Json> &ParsedJson::earlierCopies(const Json &object,
                                                               const char *key) const
{
    static const std::vector<Json> none;
    if (repeated.empty()) // the usual case: no key was repeated
        return none;
    const auto copies = repeated.find({&object.get_ref<const Json::object_t &>(), key});
    return copies == repeated.end() ? none : copies->second;
}
