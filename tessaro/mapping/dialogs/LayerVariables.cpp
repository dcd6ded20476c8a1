#include "tessaro/mapping/dialogs/LayerVariables.h"

#include "tessaro/mapping/engine/LispText.h"

namespace {

struct LayerVariable {
    const wchar_t* symbol;
    const wchar_t* entry;
};

constexpr LayerVariable kLayerVariables[] = {
    {L"ZORA_S_LYR", L"ZORA VEX3 Object Layer"}, {L"ZORA_C_LYR", L"ZORA VEX3 Center Layer"},
    {L"ZORA_H_LYR", L"ZORA VEX3 Hidden Layer"}, {L"ZORA_DIM_LYR", L"ZORA VEX3 Dimension Layer"},
    {L"S_LYR", L"ZORA VEX Object Layer"},       {L"C_LYR", L"ZORA VEX Center Layer"},
    {L"H_LYR", L"ZORA VEX Hidden Layer"},       {L"DIM_LYR", L"ZORA VEX Dimension Layer"},
};

/// The variable of a class of objects; null for a letter that stands for none.
const wchar_t* VariableOfClass(wchar_t letter) {
    switch (letter) {
    case L'C':
        return L"C_LYR";
    case L'D':
        return L"DIM_LYR";
    case L'H':
        return L"H_LYR";
    case L'O':
        return L"S_LYR";
    default:
        return nullptr;
    }
}

} // namespace

std::vector<std::wstring> LayerVariableEntries() {
    std::vector<std::wstring> entries;
    for (const auto& [symbol, entry] : kLayerVariables)
        if (TextOfSymbol(symbol))
            entries.emplace_back(entry);
    return entries;
}

bool ReplaceByVariable(std::wstring& choice) {
    constexpr std::size_t kClassPlace = 9; // behind "ZORA VEX "; one further behind "ZORA VEX3 "
    if (!choice.starts_with(L"ZORA VEX"))
        return false;
    const auto letterAt = [&](std::size_t place) { return place < choice.size() ? choice[place] : L'\0'; };
    const bool prefixed = letterAt(kClassPlace) == L' ';
    const wchar_t* const variable = VariableOfClass(letterAt(prefixed ? kClassPlace + 1 : kClassPlace));
    // A layer of the drawing may begin so too; its name is then taken for a variable's, which none has.
    if (variable != nullptr)
        choice = (prefixed ? L"ZORA_" : L"") + std::wstring(variable);
    return true;
}
