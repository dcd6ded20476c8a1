#include "editor/dwg/quick_facts.h"

#include "editor/dwg/summary_record.h"

namespace dwg {

std::optional<ViewFacts> findActiveView(const ObjectFinder& objects, const HeaderVariables& variables) {
    const auto table = objects.find(variables.viewportControl.value);
    const auto* const control = table ? table->as<TableControl>() : nullptr;
    if (control == nullptr)
        return std::nullopt;
    for (const HandleRef record : control->records) {
        const auto found = objects.find(record.value);
        const auto* const viewport = found ? found->as<ViewportRecord>() : nullptr;
        if (viewport != nullptr && isActiveView(*viewport))
            return viewFacts(*viewport);
    }
    return std::nullopt;
}

std::optional<SummaryTexts> findSummaryTexts(const ObjectFinder& objects, const HeaderVariables& variables) {
    const auto names = objects.find(variables.namedObjectsDictionary.value);
    const auto* const dictionary = names ? names->as<Dictionary>() : nullptr;
    const auto entry = dictionary == nullptr ? Handle{0} : summaryEntry(*dictionary);
    if (entry == 0)
        return std::nullopt;
    const auto record = objects.find(entry);
    const auto* const values = record ? record->as<DataRecord>() : nullptr;
    return values == nullptr ? std::nullopt : std::optional(summaryTextsOf(*values, objects.codePage()));
}

} // namespace dwg
