#pragma once

#include <QString>

#include <string>
#include <string_view>

inline QString ToQt(std::wstring_view text) {
    return QString::fromWCharArray(text.data(), static_cast<qsizetype>(text.size()));
}

inline std::wstring FromQt(const QString& text) {
    return text.toStdWString();
}

/// A text for a menu or a button's caption, in which an ampersand stands for itself.
inline QString CaptionText(std::wstring_view text) {
    return ToQt(text).replace(QLatin1Char('&'), QLatin1String("&&"));
}
