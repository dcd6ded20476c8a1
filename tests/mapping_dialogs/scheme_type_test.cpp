#include "tessaro/mapping/dialogs/SchemeType.h"

#include "tests/mapping_dialogs/DialogTest.h"

#include <QLabel>

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

namespace {

struct SchemeTypeTest : tests::DialogTest {
    int Run(SchemeType& dialog, const std::function<void(SchemeType&)>& script) {
        InNext<SchemeType>(script);
        return dialog.DoModal();
    }
    static constexpr const char* kinds[]{"layer", "linetype", "color", "block"};
};

} // namespace

TEST_F(SchemeTypeTest, TheCaptionHoldsTwoTextsAndAsManyBlanksAsFitBetweenThem) {
    SchemeType dialog;
    Run(dialog, [&](SchemeType& shown) {
        const QString title = shown.windowTitle();
        EXPECT_TRUE(title.startsWith("Tessaro - Scheme Type"));
        EXPECT_TRUE(title.endsWith("Norvane, Inc."));
        const QString between = title.mid(21, title.size() - 21 - 13);
        EXPECT_TRUE(between.trimmed().isEmpty());
    });
}

TEST_F(SchemeTypeTest, TheBlanksOfTheCaptionAreWhatIsLeftOverByTheWidthOfOne) {
    const CaptionWidths widths{.window = 300, .left = 100, .right = 60, .frame = 3, .button = 20, .blank = 4};
    EXPECT_EQ(CaptionBlanks(widths), (300 - 160 - 6 - 20 - 4) / 4);
    CaptionWidths other = widths;
    other.blank = 3;
    EXPECT_EQ(CaptionBlanks(other), 36) << "rounded down";
    other.window = 189;
    EXPECT_EQ(CaptionBlanks(other), 0);
    other.window = 10;
    EXPECT_EQ(CaptionBlanks(other), 0);
    other.blank = 0;
    EXPECT_EQ(CaptionBlanks(other), 0);
}

TEST_F(SchemeTypeTest, OffersTheFourKindsWithNoneChosen) {
    SchemeType dialog;
    EXPECT_EQ(dialog.typeIndex, -1);
    EXPECT_FALSE(dialog.typeLocked);
    Run(dialog, [&](SchemeType& shown) {
        EXPECT_EQ(shown.findChild<QLabel*>()->text(), "Select the scheme type:");
        QStringList captions;
        for (const char* const kind : kinds) {
            const auto* const button = Find<QRadioButton>(shown, kind);
            captions << button->text().remove('&');
            EXPECT_FALSE(button->isChecked());
            EXPECT_TRUE(button->isEnabled());
        }
        EXPECT_EQ(captions, (QStringList{"Layer", "Linetype", "Color", "Block"}));
    });
}

TEST_F(SchemeTypeTest, OkGivesTheKindAndTheTrimmedName) {
    for (int index = 0; index < 4; ++index) {
        SchemeType dialog;
        const int result = Run(dialog, [&](SchemeType& shown) {
            Click(shown, kinds[index]);
            Type(*Find<QLineEdit>(shown, "name"), "  My Scheme ");
            Press(shown, "OK");
        });
        EXPECT_EQ(result, QDialog::Accepted);
        EXPECT_EQ(dialog.typeIndex, index);
        EXPECT_EQ(dialog.name, L"My Scheme");
    }
    EXPECT_THAT(messages, IsEmpty());
}

TEST_F(SchemeTypeTest, WhatIsMissingOrTakenIsToldAndTheDialogStays) {
    SchemeType dialog;
    dialog.existingNames = {L"Walls", L"\u00c4rger"};
    const int result = Run(dialog, [&](SchemeType& shown) {
        QLineEdit& name = *Find<QLineEdit>(shown, "name");
        const auto expect = [&](const QString& text, const wchar_t* message) {
            messages.clear();
            Type(name, text);
            Press(shown, "OK");
            EXPECT_THAT(messages, ElementsAre(Pair(L"New Scheme", message)));
            EXPECT_TRUE(shown.isVisible());
            EXPECT_EQ(name.text(), text.trimmed()) << "written back";
        };
        expect("", L"Not all fields filled in.");
        expect("free", L"Not all fields filled in.");
        Click(shown, "block");
        expect("   ", L"Not all fields filled in.");
        expect(" walls ", L"Scheme already defined.");
        expect(QString::fromWCharArray(L"\u00e4RGER"), L"Scheme already defined.");
    });
    EXPECT_EQ(result, QDialog::Rejected);
}

TEST_F(SchemeTypeTest, ALockedKindCanNotBeChanged) {
    SchemeType dialog;
    dialog.typeLocked = true;
    dialog.typeIndex = 2;
    const int result = Run(dialog, [&](SchemeType& shown) {
        for (const char* const kind : kinds)
            EXPECT_FALSE(Find<QRadioButton>(shown, kind)->isEnabled());
        EXPECT_TRUE(Find<QRadioButton>(shown, "color")->isChecked());
        Type(*Find<QLineEdit>(shown, "name"), "Copy");
        Press(shown, "OK");
    });
    EXPECT_EQ(result, QDialog::Accepted);
    EXPECT_EQ(dialog.typeIndex, 2);
}
