#pragma once

#include "companions/TessaroHelper/HelperInterface.h"

#include <gtest/gtest.h>

#include <functional>
#include <mutex>
#include <string>
#include <vector>

namespace tests {

/// Makes the bridge find its helper anew. The object that it had lives to the end of the process, as the bridge's own.
void ForgetServices();

/// What the bridge asked the helper for, and where the helper answers.
struct HelperCall {
    std::wstring path;
    bool wantInsPts = false;
    int width = 0;
    int height = 0;
    HelperDate* first = nullptr;
    HelperDate* second = nullptr;
    std::vector<double> numbers;      ///< appended after the answer
    const wchar_t* description = L""; ///< null leaves it unset
    std::wstring failure;
};

/// Puts a helper of the test's own in the helper's place; `answer` is carried out for each call, which `calls` counts.
/// Without an answer the helper answers false.
class HelperFixture : public testing::Test {
protected:
    HelperFixture();
    ~HelperFixture() override;

    std::function<HelperResult(HelperCall&)> answer;
    std::vector<HelperCall> calls;

private:
    static HelperResult Answer(void* object, const wchar_t* path, std::int32_t wantInsPts, std::int32_t width,
                               std::int32_t height, const HelperList* data, HelperDate* first, HelperDate* second,
                               const HelperText* description, const HelperText* failure);
    static HelperFixture* current;
    std::mutex lock; ///< calls may come from several threads
};

/// An answer of true with one date and a description.
HelperResult answerPlainly(HelperCall& call);
/// The date that it gives.
constexpr HelperDate kPlainDate{2014, 5, 17, 13, 51, 21};

} // namespace tests
