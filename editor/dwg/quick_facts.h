#pragma once

#include "editor/dwg/facts.h"
#include "editor/dwg/header_variables.h"
#include "editor/dwg/object_finder.h"
#include "editor/dwg/summary_texts.h"

/// Facts of a drawing that cost a few reads.
namespace dwg {

/// The first record "*Active" of the viewport table; nothing where there is none or it can't be read.
std::optional<ViewFacts> findActiveView(const ObjectFinder& objects, const HeaderVariables& variables);

/// The summary of a drawing of R13 to 2000, which is a record among its objects; nothing for a drawing that was never
/// given one. Later releases keep it in a section: readSummaryInfo.
std::optional<SummaryTexts> findSummaryTexts(const ObjectFinder& objects, const HeaderVariables& variables);

} // namespace dwg
