#include "tessaro/mapping/dialogs/SchemeType.h"

#include "tessaro/platform/Text.h"
#include "tessaro/platform/UserInterface.h"

#include <QButtonGroup>
#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QFontMetrics>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QStyle>
#include <QVBoxLayout>

#include <algorithm>

namespace {

constexpr const wchar_t* kMessageTitle = L"New Scheme";

} // namespace

SchemeType::SchemeType(QWidget* owner) : QDialog(owner), types(new QButtonGroup(this)), nameBox(new QLineEdit(this)) {
    setObjectName(QStringLiteral("SchemeType"));
    auto* const column = new QVBoxLayout(this);
    column->addWidget(new QLabel(QStringLiteral("Select the scheme type:"), this));
    int index = 0;
    for (const char* const caption : {"&Layer", "L&inetype", "&Color", "&Block"}) {
        auto* const button = new QRadioButton(QString::fromLatin1(caption), this);
        button->setObjectName(button->text().remove(QLatin1Char('&')).toLower());
        types->addButton(button, index++);
        column->addWidget(button);
    }
    nameBox->setObjectName(QStringLiteral("name"));
    nameBox->setMinimumWidth(260);
    auto* const label = new QLabel(QStringLiteral("&Name:"), this);
    label->setBuddy(nameBox);
    auto* const row = new QHBoxLayout;
    row->addWidget(label);
    row->addWidget(nameBox, 1);
    column->addSpacing(6);
    column->addLayout(row);
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    column->addWidget(buttons);
    column->setSizeConstraint(QLayout::SetFixedSize);
    connect(buttons, &QDialogButtonBox::accepted, this, &SchemeType::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &SchemeType::reject);
}

int SchemeType::DoModal() {
    OnInitDialog();
    return exec();
}

void SchemeType::OnInitDialog() {
    if (QAbstractButton* const button = types->button(typeIndex))
        button->setChecked(true);
    for (QAbstractButton* const button : types->buttons())
        button->setEnabled(!typeLocked);
    nameBox->setText(QString::fromStdWString(name));
    nameBox->setFocus();
    ShowCaption();
}

void SchemeType::ShowCaption() {
    const QString left = QStringLiteral("Tessaro - Scheme Type"), right = QStringLiteral("Norvane, Inc.");
    const QFontMetrics metrics(QFontDatabase::systemFont(QFontDatabase::TitleFont));
    const int blanks = CaptionBlanks({.window = sizeHint().width(),
                                      .left = metrics.horizontalAdvance(left),
                                      .right = metrics.horizontalAdvance(right),
                                      .frame = style()->pixelMetric(QStyle::PM_MdiSubWindowFrameWidth),
                                      .button = style()->pixelMetric(QStyle::PM_TitleBarButtonSize),
                                      .blank = metrics.horizontalAdvance(QLatin1Char(' '))});
    setWindowTitle(left + QString(blanks, QLatin1Char(' ')) + right);
}

int CaptionBlanks(const CaptionWidths& widths) {
    constexpr int kSpare = 4;
    const int room = widths.window - widths.left - widths.right - 2 * widths.frame - widths.button - kSpare;
    return widths.blank > 0 ? std::max(0, room / widths.blank) : 0;
}

void SchemeType::accept() {
    typeIndex = types->checkedId();
    name = platform::Trim(nameBox->text().toStdWString());
    nameBox->setText(QString::fromStdWString(name));
    if (typeIndex < 0 || name.empty()) {
        platform::MessageBox(L"Not all fields filled in.", kMessageTitle);
        return;
    }
    const auto isThis = [this](const std::wstring& other) { return platform::EqualNoCase(name, other); };
    if (std::any_of(existingNames.begin(), existingNames.end(), isThis)) {
        platform::MessageBox(L"Scheme already defined.", kMessageTitle);
        return;
    }
    QDialog::accept();
}
