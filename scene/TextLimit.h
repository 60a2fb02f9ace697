#pragma once

#include <QString>
#include <string>

// At most this many characters of a host's text are laid out, in a message
// or an overlay: a repaint lays out the whole string, and megabytes of text
// would take seconds a frame. Longer text is cut and ends in an ellipsis;
// the host's whole text is kept beside it.
constexpr int kMaxLaidOutCharacters = 4096;

inline QString laidOutText(const QString& text) {
    if (text.size() <= kMaxLaidOutCharacters) return text;
    return text.left(kMaxLaidOutCharacters) + QChar(0x2026);
}

inline std::wstring laidOutText(const std::wstring& text) {
    if (text.size() <= static_cast<std::size_t>(kMaxLaidOutCharacters)) return text;
    return text.substr(0, kMaxLaidOutCharacters) + L'\x2026';
}
