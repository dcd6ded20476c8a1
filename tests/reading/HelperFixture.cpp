#include "tests/reading/HelperFixture.h"

#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/MainThread.h"
#include "tessaro/platform/SharedLibrary.h"
#include "tessaro/platform/Text.h"
#include "tessaro/reading/Bridge.h"
#include "tests/reading/fake_helper/FakeHelper.h"

#include <stdexcept>

namespace tests {

HelperFixture* HelperFixture::current = nullptr;

void ForgetServices() {
    static auto& made = *new std::vector<std::intptr_t>;
    made.push_back(servicesptr);
    servicesptr = 0;
}

HelperFixture::HelperFixture() {
    platform::SetMainThread();
    ForgetServices();
    LocalPath = platform::FromNarrow(TESSARO_BIN_DIR "/fake_helper");
    platform::SharedLibrary library(LocalPath + L"/TessaroHelper.dll");
    const auto setAnswer = reinterpret_cast<void (*)(FakeAnswer)>(library.Find(kFakeHelperSetAnswer));
    if (setAnswer == nullptr)
        throw std::runtime_error("no helper of the tests");
    setAnswer(&HelperFixture::Answer);
    library.Release();
    current = this;
}

HelperFixture::~HelperFixture() {
    current = nullptr;
    ForgetServices();
    LocalPath.clear();
}

HelperResult HelperFixture::Answer(void*, const wchar_t* path, std::int32_t wantInsPts, std::int32_t width,
                                   std::int32_t height, const HelperList* data, HelperDate* first, HelperDate* second,
                                   const HelperText* description, const HelperText* failure) {
    const std::lock_guard guard(current->lock);
    HelperCall call{path, wantInsPts != 0, width, height, first, second, {}, L"", {}};
    const HelperResult result = current->answer ? current->answer(call) : kHelperFalse;
    for (const double number : call.numbers)
        data->append(data->owner, number);
    if (call.description != nullptr)
        description->assign(description->owner, call.description, std::char_traits<wchar_t>::length(call.description));
    failure->assign(failure->owner, call.failure.data(), call.failure.size());
    current->calls.push_back(call);
    return result;
}

HelperResult answerPlainly(HelperCall& call) {
    *call.first = kPlainDate;
    *call.second = kPlainDate;
    call.description = L"from the helper";
    return kHelperTrue;
}

} // namespace tests
