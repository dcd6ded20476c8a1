#pragma once

#include "editor/sdk/db.h"

#include <string>
#include <vector>

namespace editor {

/// What a block definition wants to know of each of its references.
struct AttributeQuestion {
    std::wstring tag, prompt, byDefault;
    bool preset = false; ///< isn't asked, the default is taken
    bool verify = false;
};

/// The attribute definitions of a block in their order, without constant ones.
std::vector<AttributeQuestion> attributeQuestions(AcDbObjectId block);

/// Gives a reference that is part of a drawing its attributes: one for each question, where and as large as the
/// reference shows the definition. Values beyond the questions are dropped, missing ones are the defaults. An Acad
/// status.
int addAttributes(AcDbObjectId reference, const std::vector<std::wstring>& values);

} // namespace editor
