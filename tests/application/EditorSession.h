#pragma once

#include "editor/application/editor.h"
#include "editor/application/text.h"

#include <deque>
#include <gmock/gmock.h>
#include <ostream>
#include <string>
#include <vector>

inline void PrintTo(const AcGePoint3d& point, std::ostream* out) {
    *out << "(" << point.x << ", " << point.y << ", " << point.z << ")";
}

namespace tests {

inline std::string utf8(std::wstring_view text) {
    return editor::toUtf8(text);
}

/// A user who does what was written down, and then nothing more.
class WrittenUser : public editor::UserInput {
public:
    editor::UserEvent next(const editor::Prompt& prompt) override {
        prompts.push_back(prompt.text);
        if (events.empty())
            return {editor::UserEvent::Kind::End, {}, {}};
        editor::UserEvent event = events.front();
        events.pop_front();
        return event;
    }
    void interrupt() override { ++interruptions; }

    void types(const std::wstring& text) { events.push_back({editor::UserEvent::Kind::Text, text, {}}); }
    void picks(const AcGePoint3d& point) { events.push_back({editor::UserEvent::Kind::Point, {}, point}); }
    void cancels() { events.push_back({editor::UserEvent::Kind::Cancel, {}, {}}); }

    std::deque<editor::UserEvent> events;
    std::vector<std::wstring> prompts;
    int interruptions = 0;
};

/// An editor on a new drawing, with its transcript and a user who is written down.
class Session {
public:
    explicit Session(bool withDrawing = true) {
        editor.console().setSink([this](std::wstring_view text) { transcript += utf8(text); });
        editor.setUserInput(&user);
        if (withDrawing)
            editor.documents().create();
    }

    AcDbDatabase& database() { return *editor.documents().current()->database(); }
    bool said(const std::string& text) const { return transcript.find(text) != std::string::npos; }
    std::vector<std::string> faults() {
        std::vector<std::string> texts;
        for (const auto& fault : editor.processor().faults())
            texts.push_back(utf8(fault));
        return texts;
    }
    /// A system variable as the command line shows it; "none" without one.
    std::string variable(std::wstring_view name) {
        const auto value = editor.variables().get(name);
        return value ? utf8(editor::Variables::text(*value)) : "none";
    }
    void addCommand(const wchar_t* name, AcRxFunctionPtr function, int flags = ACRX_CMD_MODAL) {
        ASSERT_EQ(editor.commands().addCommand(L"TEST", name, name, flags, function), eOk);
    }

    std::string transcript;
    WrittenUser user;
    editor::Editor editor;
};

/// Writes down what it is told, "started LINE", and then does what a test wants.
class RecordingReactor : public AcEditorReactor {
public:
    void commandWillStart(const wchar_t* name) override { note("started ", name); }
    void commandEnded(const wchar_t* name) override { note("ended ", name); }
    void commandCancelled(const wchar_t* name) override { note("cancelled ", name); }
    void commandFailed(const wchar_t* name) override { note("failed ", name); }

    std::vector<std::string> events;
    std::function<void(const std::string& event)> then;

private:
    void note(const char* what, const wchar_t* name) {
        events.push_back(what + utf8(name));
        if (then)
            then(std::string(events.back()));
    }
};

/// What model space holds, one text each in order: "LINE", "CIRCLE", "INSERT DOOR".
std::vector<std::string> modelSpaceOf(AcDbDatabase& database);

} // namespace tests
