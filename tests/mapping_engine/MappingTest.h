#pragma once

#include "tests/database/database_support.h"

#include "editor/application/editor.h"
#include "tessaro/mapping/MapScheme.h"
#include "tessaro/mapping/engine/MappingRun.h"
#include "tessaro/mapping/engine/NewMapQuestion.h"
#include "tessaro/platform/UserInterface.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <deque>
#include <string>
#include <utility>
#include <vector>

namespace tests {

using Names = std::vector<std::wstring>;
/// From and To; a To text that begins with "Var:" names a variable.
using Maps = std::vector<std::pair<std::wstring, std::wstring>>;

/// How an entity looks or is to look.
struct Look {
    std::wstring layer;
    int colour = 256;
    std::wstring linetype = L"BYLAYER";
    bool operator==(const Look&) const = default;
};
void PrintTo(const Look& look, std::ostream* out);

enum class Kind { Line, Text, AttributeDefinition, MText, Dimension };

/// The real editor on a new drawing, a side drawing that tests fill, and a user who answers what was written down.
class MappingTest : public testing::Test, public platform::UserInterface {
protected:
    MappingTest();
    ~MappingTest() override;

    MapScheme MakeScheme(int schemeType, const Maps& maps, bool defaultToByLayer = false) const;
    /// Enters a scheme under that name.
    MapScheme& Enter(const std::wstring& name, MapScheme scheme);

    void AddLayer(const std::wstring& name, int colour = 7, const std::wstring& linetype = L"Continuous");
    void AddLinetype(const std::wstring& name);
    AcDbObjectId Add(Kind kind, const Look& look, const wchar_t* block = ACDB_MODEL_SPACE);
    /// An insertion with two attributes, each on its layer.
    AcDbObjectId AddInsertion(const Look& look, const Names& attributeLayers);
    AcDbObjectId AddLine(const std::wstring& layer) { return Add(Kind::Line, {layer}); }

    static Look LookOf(AcDbObjectId entity);
    static Names LayersOf(AcDbDatabase& database);
    static std::wstring CurrentLayerOf(AcDbDatabase& database);
    void SetSymbol(const std::wstring& name, editor::LispValue value) { host.lisp().setSymbol(name, std::move(value)); }

    /// The next answer to the question for a new map; without one left it is cancelled.
    void Answer(const std::wstring& to, bool isVariable = false) { answers.push_back(NewMapAnswer{to, isVariable}); }
    void Cancel() { answers.emplace_back(); }

    editor::Editor host;
    AcDbDatabase& drawing;
    AcDbDatabase side;
    Names messages;                                  ///< what was shown
    std::vector<std::pair<int, std::wstring>> asked; ///< scheme type and From of every question

private:
    static std::optional<NewMapAnswer> Ask(int schemeType, const std::wstring& fromText);

    platform::MessageAnswer MessageBox(const std::wstring& text, const std::wstring& caption,
                                       platform::MessageButtons buttons, platform::MessageIcon icon) override;
    void BeginWaitCursor() override {}
    void EndWaitCursor() override {}
    std::optional<std::wstring> PickFolder(const std::wstring&, const std::wstring&) override { return {}; }
    std::optional<std::wstring> PickSaveFile(const std::wstring&, const std::wstring&) override { return {}; }
    void ShowHelp(const std::wstring&) override {}

    std::deque<std::optional<NewMapAnswer>> answers;
};

} // namespace tests
