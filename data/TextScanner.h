#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace qel {

// Line and token scanning over a byte buffer for the text file formats.
// Never reads past the buffer; numbers are parsed without the locale.
class TextScanner {
public:
    TextScanner(const std::uint8_t* data, std::size_t size)
        : text_(reinterpret_cast<const char*>(data), size) {}
    explicit TextScanner(std::string_view text) : text_(text) {}

    bool atEnd() const { return pos_ >= text_.size(); }
    std::size_t position() const { return pos_; }
    std::size_t remaining() const { return text_.size() - pos_; }

    // The next line without its end (\n, \r\n or \r); false at the end.
    bool nextLine(std::string_view& line);
    // The next whitespace-separated token across lines; false at the end.
    bool nextToken(std::string_view& token);

    // Splits a line at spaces, tabs and the given extra separators; empty
    // fields between two extra separators are kept when keepEmpty is set.
    static void split(std::string_view line, std::vector<std::string_view>& fields,
                      std::string_view separators = {}, bool keepEmpty = false);
    static std::string_view trim(std::string_view s);

    // Whole-token parses: false when any character is left over or the token
    // is empty. Doubles accept nan and inf (the callers decide about them).
    static bool toDouble(std::string_view token, double& value);
    static bool toFloat(std::string_view token, float& value);
    static bool toLong(std::string_view token, long long& value);

private:
    std::string_view text_;
    std::size_t pos_ = 0;
};

}  // namespace qel
