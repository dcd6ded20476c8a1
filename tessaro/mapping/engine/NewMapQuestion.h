#pragma once

#include <optional>
#include <string>

/// What the user says to a name that no map of a scheme matches.
struct NewMapAnswer {
    std::wstring toText;
    bool isVariable = false; ///< toText names an AutoLISP variable
};

/// Asks for the map of `fromText`, for a scheme of that type; nothing on cancel.
using NewMapQuestion = std::optional<NewMapAnswer> (*)(int schemeType, const std::wstring& fromText);

/// Who asks: the dialogs, or a test. Null has every question count as cancelled. Main thread.
void SetNewMapQuestion(NewMapQuestion question);
NewMapQuestion CurrentNewMapQuestion();
