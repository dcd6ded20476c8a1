#include "tessaro/mapping/engine/ResolveMap.h"

#include "tessaro/mapping/engine/LispText.h"
#include "tessaro/mapping/engine/NewMapQuestion.h"
#include "tessaro/platform/Text.h"

#include "editor/sdk/editor.h"

namespace {

constexpr int kAsk = 1, kDefault = 2;

NewMapQuestion newMapQuestion = nullptr;

/// The text of an AutoLISP variable in place of its name; the name stays where the variable holds no text.
void ResolveVariable(std::wstring& target) {
    target = TextOfSymbol(target).value_or(target);
}

/// On this one run a variable's own name is the layer: it is not resolved until the next look-up.
bool AskForMap(MapScheme& scheme, const std::wstring& name, std::wstring& target) {
    const auto answer = newMapQuestion == nullptr ? std::nullopt : newMapQuestion(scheme.schemeType, name);
    if (!answer)
        return false;
    target = answer->toText;
    scheme.maps.SetAt(name, target);
    if (answer->isVariable)
        scheme.variableMaps.SetAt(name, 1);
    return true;
}

} // namespace

void SetNewMapQuestion(NewMapQuestion question) {
    newMapQuestion = question;
}

NewMapQuestion CurrentNewMapQuestion() {
    return newMapQuestion;
}

bool ResolveMap(MapScheme& scheme, std::wstring& name, std::wstring& target) {
    name = platform::ToUpper(name);
    for (const auto& [from, to] : scheme.maps) {
        const std::wstring pattern = platform::ToUpper(from);
        if (acutWcMatch(name.c_str(), pattern.c_str()) != RTNORM)
            continue;
        target = to;
        if (scheme.variableMaps.Lookup(pattern) != nullptr)
            ResolveVariable(target);
        return true;
    }
    if (scheme.unknownMode == kAsk)
        return AskForMap(scheme, name, target);
    if (scheme.unknownMode != kDefault)
        return false;
    target = scheme.unknownValue;
    if (scheme.unknownIsVariable)
        ResolveVariable(target);
    return true;
}
