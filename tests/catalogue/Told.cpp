#include "tests/catalogue/Told.h"

#include <gtest/gtest.h>

namespace catalogue_tests {

Told* Told::current = nullptr;

Told::Told() {
    current = this;
    platform::SetUserInterface(this);
}

Told::~Told() {
    platform::SetUserInterface(nullptr);
    current = nullptr;
    EXPECT_EQ(waiting, 0) << "a wait cursor was left";
}

void Told::Print(const std::wstring& text) {
    if (current != nullptr)
        current->lines.push_back(L"print " + text);
    else
        ADD_FAILURE() << "a line on the command line that nothing expects";
}

platform::MessageAnswer Told::MessageBox(const std::wstring& text, const std::wstring& caption,
                                         platform::MessageButtons buttons, platform::MessageIcon icon) {
    EXPECT_EQ(caption, L"Tessaro");
    EXPECT_EQ(buttons, platform::MessageButtons::Ok);
    EXPECT_NE(icon, platform::MessageIcon::Question);
    lines.push_back((icon == platform::MessageIcon::Exclamation ? L"warning " : L"box ") + text);
    return platform::MessageAnswer::Ok;
}

void Told::BeginWaitCursor() {
    ++waits;
    ++waiting;
}

void Told::EndWaitCursor() {
    --waiting;
}

} // namespace catalogue_tests
