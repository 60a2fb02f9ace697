#include "TextScanner.h"

#include <charconv>
#include <cmath>

namespace qel {

namespace {
bool isSpace(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f' || c == '\v';
}
}  // namespace

bool TextScanner::nextLine(std::string_view& line) {
    if (atEnd()) return false;
    const std::size_t start = pos_;
    while (pos_ < text_.size() && text_[pos_] != '\n' && text_[pos_] != '\r')
        ++pos_;
    line = text_.substr(start, pos_ - start);
    if (pos_ < text_.size()) {
        if (text_[pos_] == '\r' && pos_ + 1 < text_.size() && text_[pos_ + 1] == '\n') ++pos_;
        ++pos_;
    }
    return true;
}

bool TextScanner::nextToken(std::string_view& token) {
    while (pos_ < text_.size() && isSpace(text_[pos_]))
        ++pos_;
    if (atEnd()) return false;
    const std::size_t start = pos_;
    while (pos_ < text_.size() && !isSpace(text_[pos_]))
        ++pos_;
    token = text_.substr(start, pos_ - start);
    return true;
}

void TextScanner::split(std::string_view line, std::vector<std::string_view>& fields,
                        std::string_view separators, bool keepEmpty) {
    fields.clear();
    std::size_t i = 0;
    const std::size_t n = line.size();
    auto isSep = [&](char c) { return separators.find(c) != std::string_view::npos; };
    while (i < n) {
        while (i < n && isSpace(line[i]))
            ++i;
        if (i >= n) break;
        if (isSep(line[i])) {
            if (keepEmpty) fields.push_back(std::string_view());
            ++i;
            continue;
        }
        const std::size_t start = i;
        while (i < n && !isSpace(line[i]) && !isSep(line[i]))
            ++i;
        fields.push_back(line.substr(start, i - start));
        while (i < n && isSpace(line[i]))
            ++i;
        if (i < n && isSep(line[i])) ++i;  // the separator that ends this field
    }
}

std::string_view TextScanner::trim(std::string_view s) {
    while (!s.empty() && isSpace(s.front()))
        s.remove_prefix(1);
    while (!s.empty() && isSpace(s.back()))
        s.remove_suffix(1);
    return s;
}

bool TextScanner::toDouble(std::string_view token, double& value) {
    if (!token.empty() && token.front() == '+') token.remove_prefix(1);
    if (token.empty()) return false;
    const char* end = token.data() + token.size();
    const auto result = std::from_chars(token.data(), end, value);
    if (result.ec == std::errc::result_out_of_range) {
        // Beyond a double: a negative exponent underflows to 0, anything
        // else overflows to infinity.
        const std::size_t e = token.find_first_of("eE");
        const bool underflow =
            e != std::string_view::npos && e + 1 < token.size() && token[e + 1] == '-';
        const double magnitude = underflow ? 0.0 : HUGE_VAL;
        value = token.front() == '-' ? -magnitude : magnitude;
        return result.ptr == end;
    }
    return result.ec == std::errc() && result.ptr == end;
}

bool TextScanner::toFloat(std::string_view token, float& value) {
    double d = 0.0;
    if (!toDouble(token, d)) return false;
    value = static_cast<float>(d);
    return true;
}

bool TextScanner::toLong(std::string_view token, long long& value) {
    if (!token.empty() && token.front() == '+') token.remove_prefix(1);
    if (token.empty()) return false;
    const char* end = token.data() + token.size();
    const auto result = std::from_chars(token.data(), end, value);
    return result.ec == std::errc() && result.ptr == end;
}

}  // namespace qel
