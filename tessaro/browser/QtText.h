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

/// A text for a menu or a button's caption, in which an ampersand stands for itself and control characters, a tab or a
/// line end among them, for a blank.
inline QString CaptionText(std::wstring_view text) {
    QString caption = ToQt(text).replace(QLatin1Char('&'), QLatin1String("&&"));
    for (QChar& character : caption)
        if (character.category() == QChar::Other_Control)
            character = QLatin1Char(' ');
    return caption;
}
