// The three tables of the command-line reactor over every combination of flags and commands. The tables stand here a
// second time, as rows of condition and effect.
#include "tests/placement/FakeHost.h"

#include "tessaro/mapping/engine/Engine.h"
#include "tessaro/placement/CmdLineReactor.h"

#include <functional>
#include <ostream>

namespace {

struct State {
    bool active = true, explode = false, multiple = false, relaunch = false, safe = false;
    bool catalogue = false, dash = false;
    std::vector<std::wstring> sent{};
    bool variables = false; ///< CMDDIA and FILEDIA were restored
    bool layer = false;     ///< the current layer was restored
    bool definition = true; ///< is in the drawing
    bool operator==(const State&) const = default;
};

[[maybe_unused]] void PrintTo(const State& state, std::ostream* out) {
    *out << "active " << state.active << " explode " << state.explode << " multiple " << state.multiple << " relaunch "
         << state.relaunch << " safe " << state.safe << " catalogue " << state.catalogue << " dash " << state.dash
         << " variables " << state.variables << " layer " << state.layer << " definition " << state.definition
         << " sent " << state.sent.size();
}

using Name = std::wstring;

bool places(const Name& name) {
    return name == L"-INSERT" || name == L"-XREF";
}

bool placesOrExplodes(const Name& name) {
    return places(name) || name == L"EXPLODE";
}

void relaunch(State& state) {
    if (!state.relaunch)
        return;
    state.sent.push_back(L"tessaro\n");
    state.relaunch = false;
}

struct Row {
    std::function<bool(const State&, const Name&)> when;
    std::function<void(State&)> then;
};

void endCatalogue(State& state) {
    state.variables = state.safe = true;
    state.active = false;
    relaunch(state);
}

const std::vector<Row>& ended() {
    static const std::vector<Row> rows = {
        {[](const State& s, const Name& n) { return n == L"AMCATALOG" && s.catalogue; },
         [](State& s) {
             s.catalogue = false;
             s.safe = true;
             if (s.dash) {
                 s.sent.push_back(L"resume\n");
                 return;
             }
             s.variables = true;
             s.active = false;
             relaunch(s);
         }},
        {[](const State& s, const Name& n) { return n == L"-AMCATALOG" && s.dash; },
         [](State& s) {
             s.dash = false;
             endCatalogue(s);
         }},
        {[](const State& s, const Name& n) { return n == L"AMNEW" && s.catalogue; },
         [](State& s) {
             s.dash = s.catalogue = false;
             endCatalogue(s);
         }},
        {[](const State& s, const Name& n) { return s.explode && places(n); },
         [](State& s) {
             s.sent.push_back(L"._explode (entlast)\n\n");
             if (!s.multiple)
                 s.explode = false;
             s.safe = true;
         }},
        {[](const State& s, const Name& n) { return s.multiple && placesOrExplodes(n); },
         [](State& s) {
             s.sent.push_back(L"again\n");
             s.safe = true;
         }},
        {[](const State& s, const Name& n) { return s.relaunch && placesOrExplodes(n); },
         [](State& s) {
             s.active = false;
             s.layer = true;
             relaunch(s);
             s.safe = true;
         }},
        {[](const State&, const Name& n) { return placesOrExplodes(n); },
         [](State& s) {
             s.safe = s.layer = true;
             s.active = false;
         }},
    };
    return rows;
}

void applyEnded(State& state, const Name& name) {
    for (const Row& row : ended())
        if (row.when(state, name))
            return row.then(state);
}

void applyStopped(State& s, const Name& name, const Name& dashName, bool erases) {
    if (name == L"AMCATALOG" && s.catalogue) {
        s.catalogue = false;
        if (!s.dash)
            s.variables = true;
        s.safe = true;
        s.active = false;
        if (!s.dash)
            relaunch(s);
        return;
    }
    if (name == dashName && s.dash) {
        s.dash = false;
        return endCatalogue(s);
    }
    if (name == L"AMNEW" && s.catalogue) {
        s.dash = s.catalogue = false;
        return endCatalogue(s);
    }
    if (s.explode && places(name))
        s.explode = false;
    if (s.multiple && placesOrExplodes(name))
        s.multiple = false;
    if (erases && !s.safe)
        s.definition = false;
    relaunch(s);
    s.active = false;
    s.layer = true;
}

class ReactorTable : public tests::PlacementTest {
protected:
    using Notification = void (CmdLineReactor::*)(const wchar_t*);

    /// Brings placement, drawing and host in a state.
    void Bring(const State& state) {
        placement = {};
        placement.placementActive = state.active;
        placement.explodePending = state.explode;
        placement.multiplePending = state.multiple;
        placement.relaunchPending = state.relaunch;
        placement.definitionSafe = state.safe;
        placement.amCatalogPending = state.catalogue;
        placement.amCatalogDashPending = state.dash;
        placement.pendingBlockName = L"door";
        placement.repeatCommand = L"again\n";
        placement.amCatalogResume = L"resume\n";
        placement.savedCmdDia = 1;
        placement.savedFileDia = 3;
        sent.clear();
        layersAtSending.clear();
        shorts.clear();
        if (!IsDefined(L"DOOR"))
            Define(L"DOOR");
        savedClayer = original;
        clayerSaved = true;
        ASSERT_EQ(drawing.setClayer(mapped), eOk);
    }

    State Found() {
        State state{placement.placementActive,
                    placement.explodePending,
                    placement.multiplePending,
                    placement.relaunchPending,
                    placement.definitionSafe,
                    placement.amCatalogPending,
                    placement.amCatalogDashPending,
                    Sent(),
                    false,
                    drawing.clayer() == original,
                    IsDefined(L"DOOR")};
        state.variables = shorts == std::map<std::wstring, short>{{L"CMDDIA", 1}, {L"FILEDIA", 3}};
        EXPECT_TRUE(state.variables || shorts.empty());
        return state;
    }

    /// Runs a notification in every state with every command.
    void RunAll(Notification notification, const std::function<void(State&, const Name&)>& table) {
        constexpr int kFlags = 7;
        for (const wchar_t* const name : {L"-INSERT", L"-XREF", L"EXPLODE", L"AMCATALOG", L"-AMCATALOG", L"AMNEW",
                                          L"LINE", L"ZOOM", L"TESSARO", L"-insert", L"INSERT", L""}) {
            for (int flags = 0; flags < 1 << kFlags; ++flags) {
                const auto flag = [flags](int bit) { return (flags >> bit & 1) != 0; };
                State expected{flag(0), flag(1), flag(2), flag(3), flag(4), flag(5), flag(6)};
                Bring(expected);
                if (expected.active)
                    table(expected, name);
                (CmdLineReactor().*notification)(name);
                ASSERT_EQ(Found(), expected)
                    << "flags " << flags << ", command " << tests::PlacementTest::Sent().size() << " "
                    << std::string(name, name + std::char_traits<wchar_t>::length(name));
            }
        }
    }

    AcDbObjectId AddLayer(const wchar_t* name) {
        AcDbLayerTable* table = nullptr;
        EXPECT_EQ(drawing.getLayerTable(table, AcDb::kForWrite), eOk);
        auto* const record = new AcDbLayerTableRecord;
        record->setName(name);
        AcDbObjectId id;
        EXPECT_EQ(table->add(id, record), eOk);
        record->close();
        table->close();
        return id;
    }

    AcDbObjectId original = AddLayer(L"Original"), mapped = AddLayer(L"Mapped");
};

} // namespace

TEST_F(ReactorTable, CommandEndedInEveryState) {
    RunAll(&CmdLineReactor::commandEnded, applyEnded);
}

TEST_F(ReactorTable, CommandCancelledInEveryState) {
    RunAll(&CmdLineReactor::commandCancelled,
           [](State& state, const Name& name) { applyStopped(state, name, L"-AMCATALOG", true); });
}

TEST_F(ReactorTable, CommandFailedInEveryState) {
    RunAll(&CmdLineReactor::commandFailed,
           [](State& state, const Name& name) { applyStopped(state, name, L"AMCATALOG", false); });
}

TEST_F(ReactorTable, TheStartOfACommandIsNothingToIt) {
    Bring({true, true, true, true, false, true, true});
    CmdLineReactor().commandWillStart(L"-INSERT");
    EXPECT_EQ(Found(), (State{true, true, true, true, false, true, true}));
}

TEST_F(ReactorTable, TheLayerIsRestoredBeforeTheBrowserIsReopenedAndStaysForTheNextInsertion) {
    Bring({.relaunch = true});
    CmdLineReactor().commandEnded(L"-INSERT");
    EXPECT_EQ(layersAtSending, std::vector{original});
    Bring({.multiple = true});
    CmdLineReactor().commandEnded(L"-INSERT");
    EXPECT_EQ(layersAtSending, std::vector{mapped});
    Bring({.explode = true});
    CmdLineReactor().commandEnded(L"-XREF");
    EXPECT_EQ(layersAtSending, std::vector{mapped});
}
