#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// A strict JSON text parser (RFC 8259) that reports what it reads as events,
// in one pass, without building a tree and without recursion (nesting depth
// costs one byte of stack per level on the heap).
//
// Strict means: exactly one value, surrounded only by JSON whitespace (an
// initial UTF-8 byte order mark is skipped); strings must be valid UTF-8 with
// no raw control characters and no unpaired surrogate escapes; numbers follow
// the JSON grammar. An integer without fraction or exponent is reported as
// unsigned (non-negative) or signed (negative) when it fits 64 bits; every
// other number, also an integer too large for 64 bits, as a float.
//
// The handler provides:
//   bool null(); bool boolean(bool); bool number_integer(std::int64_t);
//   bool number_unsigned(std::uint64_t); bool number_float();
//   bool string(std::string_view); bool key(std::string_view);
//   bool start_object(); bool end_object(); bool start_array(); bool end_array();
// Returning false from any of them stops the parse, which then fails.
namespace StrictJson {

template <class Handler> class Parser
{
public:
    Parser(const char *begin, const char *end, Handler &handler)
        : m_p(reinterpret_cast<const unsigned char *>(begin)),
          m_end(reinterpret_cast<const unsigned char *>(end)), m_handler(handler)
    {
    }

    bool parse()
    {
        if (m_end - m_p >= 3 && m_p[0] == 0xEF && m_p[1] == 0xBB && m_p[2] == 0xBF)
            m_p += 3;
        bool expectValue = true;
        for (;;) {
            if (expectValue) {
                switch (parseValue()) {
                case Step::Fail:
                    return false;
                case Step::ValueDone:
                    expectValue = false;
                    break;
                case Step::NeedValue:
                    break;
                }
                continue;
            }
            // After a value: the end of the text, or the next member or element.
            skipWhitespace();
            if (m_stack.empty())
                return m_p == m_end;
            if (m_p == m_end)
                return false;
            const unsigned char c = *m_p++;
            if (m_stack.back() == Object) {
                if (c == ',') {
                    if (!parseKey())
                        return false;
                    expectValue = true;
                } else if (c == '}') {
                    m_stack.pop_back();
                    if (!m_handler.end_object())
                        return false;
                } else {
                    return false;
                }
            } else {
                if (c == ',') {
                    expectValue = true;
                } else if (c == ']') {
                    m_stack.pop_back();
                    if (!m_handler.end_array())
                        return false;
                } else {
                    return false;
                }
            }
        }
    }

private:
    enum Container : std::uint8_t { Object, Array };
    enum class Step { Fail, ValueDone, NeedValue };

    void skipWhitespace()
    {
        while (m_p != m_end && (*m_p == ' ' || *m_p == '\n' || *m_p == '\r' || *m_p == '\t'))
            ++m_p;
    }

    // One value, or the opening of a container (whose first member or
    // element is then expected).
    Step parseValue()
    {
        skipWhitespace();
        if (m_p == m_end)
            return Step::Fail;
        switch (*m_p) {
        case '{':
            ++m_p;
            if (!m_handler.start_object())
                return Step::Fail;
            skipWhitespace();
            if (m_p != m_end && *m_p == '}') {
                ++m_p;
                return m_handler.end_object() ? Step::ValueDone : Step::Fail;
            }
            m_stack.push_back(Object);
            if (!parseKey())
                return Step::Fail;
            return Step::NeedValue;
        case '[':
            ++m_p;
            if (!m_handler.start_array())
                return Step::Fail;
            skipWhitespace();
            if (m_p != m_end && *m_p == ']') {
                ++m_p;
                return m_handler.end_array() ? Step::ValueDone : Step::Fail;
            }
            m_stack.push_back(Array);
            return Step::NeedValue;
        case '"': {
            std::string_view text;
            if (!parseString(text))
                return Step::Fail;
            return m_handler.string(text) ? Step::ValueDone : Step::Fail;
        }
        case 't':
            return literal("true") && m_handler.boolean(true) ? Step::ValueDone : Step::Fail;
        case 'f':
            return literal("false") && m_handler.boolean(false) ? Step::ValueDone : Step::Fail;
        case 'n':
            return literal("null") && m_handler.null() ? Step::ValueDone : Step::Fail;
        default:
            return parseNumber() ? Step::ValueDone : Step::Fail;
        }
    }

    // A member name and its colon.
    bool parseKey()
    {
        skipWhitespace();
        if (m_p == m_end || *m_p != '"')
            return false;
        std::string_view name;
        if (!parseString(name) || !m_handler.key(name))
            return false;
        skipWhitespace();
        if (m_p == m_end || *m_p != ':')
            return false;
        ++m_p;
        return true;
    }

    bool literal(std::string_view word)
    {
        if (std::size_t(m_end - m_p) < word.size() ||
            std::string_view(reinterpret_cast<const char *>(m_p), word.size()) != word)
            return false;
        m_p += word.size();
        return true;
    }

    static bool isDigit(unsigned char c) { return c >= '0' && c <= '9'; }

    bool parseNumber()
    {
        const bool negative = *m_p == '-';
        if (negative)
            ++m_p;
        const unsigned char *digits = m_p;
        if (m_p == m_end || !isDigit(*m_p))
            return false;
        if (*m_p == '0') {
            ++m_p;
        } else {
            while (m_p != m_end && isDigit(*m_p))
                ++m_p;
        }
        const unsigned char *digitsEnd = m_p;
        bool integral = true;
        if (m_p != m_end && *m_p == '.') {
            ++m_p;
            if (m_p == m_end || !isDigit(*m_p))
                return false;
            while (m_p != m_end && isDigit(*m_p))
                ++m_p;
            integral = false;
        }
        if (m_p != m_end && (*m_p == 'e' || *m_p == 'E')) {
            ++m_p;
            if (m_p != m_end && (*m_p == '+' || *m_p == '-'))
                ++m_p;
            if (m_p == m_end || !isDigit(*m_p))
                return false;
            while (m_p != m_end && isDigit(*m_p))
                ++m_p;
            integral = false;
        }
        if (!integral)
            return m_handler.number_float();

        std::uint64_t magnitude = 0;
        for (const unsigned char *d = digits; d != digitsEnd; ++d) {
            const std::uint64_t digit = std::uint64_t(*d - '0');
            if (magnitude > (UINT64_MAX - digit) / 10)
                return m_handler.number_float(); // beyond 64 bits
            magnitude = magnitude * 10 + digit;
        }
        if (!negative)
            return m_handler.number_unsigned(magnitude);
        constexpr std::uint64_t minMagnitude = std::uint64_t(INT64_MAX) + 1;
        if (magnitude > minMagnitude)
            return m_handler.number_float();
        const std::int64_t value = magnitude == minMagnitude ? INT64_MIN : -std::int64_t(magnitude);
        return m_handler.number_integer(value);
    }

    static int hexValue(unsigned char c)
    {
        if (c >= '0' && c <= '9')
            return c - '0';
        if (c >= 'a' && c <= 'f')
            return c - 'a' + 10;
        if (c >= 'A' && c <= 'F')
            return c - 'A' + 10;
        return -1;
    }

    // Four hex digits after "\u".
    bool readHex4(std::uint32_t &unit)
    {
        if (m_end - m_p < 4)
            return false;
        unit = 0;
        for (int i = 0; i < 4; ++i) {
            const int v = hexValue(m_p[i]);
            if (v < 0)
                return false;
            unit = unit * 16 + std::uint32_t(v);
        }
        m_p += 4;
        return true;
    }

    // Length of the valid UTF-8 sequence at m_p (lead byte >= 0x80), or 0.
    std::size_t utf8SequenceLength() const
    {
        const std::size_t left = std::size_t(m_end - m_p);
        const unsigned char c = m_p[0];
        auto cont = [&](std::size_t i, unsigned char low = 0x80, unsigned char high = 0xBF) {
            return i < left && m_p[i] >= low && m_p[i] <= high;
        };
        if (c >= 0xC2 && c <= 0xDF)
            return cont(1) ? 2 : 0;
        if (c == 0xE0)
            return cont(1, 0xA0) && cont(2) ? 3 : 0;
        if ((c >= 0xE1 && c <= 0xEC) || c == 0xEE || c == 0xEF)
            return cont(1) && cont(2) ? 3 : 0;
        if (c == 0xED)
            return cont(1, 0x80, 0x9F) && cont(2) ? 3 : 0;
        if (c == 0xF0)
            return cont(1, 0x90) && cont(2) && cont(3) ? 4 : 0;
        if (c >= 0xF1 && c <= 0xF3)
            return cont(1) && cont(2) && cont(3) ? 4 : 0;
        if (c == 0xF4)
            return cont(1, 0x80, 0x8F) && cont(2) && cont(3) ? 4 : 0;
        return 0;
    }

    void appendUtf8(std::uint32_t codePoint)
    {
        if (codePoint < 0x80) {
            m_buffer.push_back(char(codePoint));
        } else if (codePoint < 0x800) {
            m_buffer.push_back(char(0xC0 | (codePoint >> 6)));
            m_buffer.push_back(char(0x80 | (codePoint & 0x3F)));
        } else if (codePoint < 0x10000) {
            m_buffer.push_back(char(0xE0 | (codePoint >> 12)));
            m_buffer.push_back(char(0x80 | ((codePoint >> 6) & 0x3F)));
            m_buffer.push_back(char(0x80 | (codePoint & 0x3F)));
        } else {
            m_buffer.push_back(char(0xF0 | (codePoint >> 18)));
            m_buffer.push_back(char(0x80 | ((codePoint >> 12) & 0x3F)));
            m_buffer.push_back(char(0x80 | ((codePoint >> 6) & 0x3F)));
            m_buffer.push_back(char(0x80 | (codePoint & 0x3F)));
        }
    }

    // A string at m_p (on its opening quote). `text` views the input when the
    // string holds no escapes, otherwise a buffer valid until the next string.
    bool parseString(std::string_view &text)
    {
        ++m_p;
        const unsigned char *start = m_p;
        bool escaped = false;
        while (m_p != m_end) {
            const unsigned char c = *m_p;
            if (c == '"') {
                if (escaped)
                    text = m_buffer;
                else
                    text = std::string_view(reinterpret_cast<const char *>(start),
                                            std::size_t(m_p - start));
                ++m_p;
                return true;
            }
            if (c < 0x20)
                return false;
            if (c == '\\') {
                if (!escaped) {
                    m_buffer.assign(reinterpret_cast<const char *>(start),
                                    std::size_t(m_p - start));
                    escaped = true;
                }
                ++m_p;
                if (!parseEscape())
                    return false;
                continue;
            }
            std::size_t length = 1;
            if (c >= 0x80) {
                length = utf8SequenceLength();
                if (length == 0)
                    return false;
            }
            if (escaped)
                m_buffer.append(reinterpret_cast<const char *>(m_p), length);
            m_p += length;
        }
        return false; // unterminated
    }

    // The escape after a backslash, appended to the buffer.
    bool parseEscape()
    {
        if (m_p == m_end)
            return false;
        const unsigned char c = *m_p++;
        switch (c) {
        case '"':
        case '\\':
        case '/':
            m_buffer.push_back(char(c));
            return true;
        case 'b':
            m_buffer.push_back('\b');
            return true;
        case 'f':
            m_buffer.push_back('\f');
            return true;
        case 'n':
            m_buffer.push_back('\n');
            return true;
        case 'r':
            m_buffer.push_back('\r');
            return true;
        case 't':
            m_buffer.push_back('\t');
            return true;
        case 'u': {
            std::uint32_t unit = 0;
            if (!readHex4(unit))
                return false;
            if (unit >= 0xDC00 && unit <= 0xDFFF)
                return false; // a low surrogate without its high half
            if (unit >= 0xD800 && unit <= 0xDBFF) {
                std::uint32_t low = 0;
                if (m_end - m_p < 2 || m_p[0] != '\\' || m_p[1] != 'u')
                    return false;
                m_p += 2;
                if (!readHex4(low) || low < 0xDC00 || low > 0xDFFF)
                    return false;
                unit = 0x10000 + ((unit - 0xD800) << 10) + (low - 0xDC00);
            }
            appendUtf8(unit);
            return true;
        }
        default:
            return false;
        }
    }

    const unsigned char *m_p;
    const unsigned char *m_end;
    Handler &m_handler;
    std::string m_buffer;
    std::vector<std::uint8_t> m_stack;
};

} // namespace StrictJson
