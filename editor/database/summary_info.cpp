#include "editor/database/database_state.h"
#include "editor/dwg/summary_record.h"

namespace {

/// From 2004 on the summary lies beside the objects.
bool isSection(const AcDbDatabase::Impl& database) {
    return database.drawing.release >= dwg::Release::r2004;
}

class SummaryInfo final : public AcDbDatabaseSummaryInfo {
public:
    explicit SummaryInfo(AcDbDatabase* of)
        : owner(of),
          texts(isSection(*of->impl()) ? of->impl()->summary.texts : dwg::readSummaryRecord(of->impl()->drawing)) {}

    int getComments(std::wstring& text) const override { return get(text, texts.comments); }
    int setComments(const wchar_t* text) override { return set(texts.comments, text); }
    int getTitle(std::wstring& text) const override { return get(text, texts.title); }
    int setTitle(const wchar_t* text) override { return set(texts.title, text); }
    AcDbDatabase* database() const override { return owner; }

    const dwg::SummaryTexts& content() const { return texts; }

private:
    static int get(std::wstring& text, const std::wstring& field) {
        text = field;
        return eOk;
    }

    static int set(std::wstring& field, const wchar_t* text) {
        if (text == nullptr)
            return Acad::eInvalidInput;
        field = text;
        return eOk;
    }

    AcDbDatabase* owner;
    dwg::SummaryTexts texts;
};

} // namespace

int acdbGetSummaryInfo(AcDbDatabase* database, AcDbDatabaseSummaryInfo*& info) {
    info = nullptr;
    if (database == nullptr || !database->impl()->hasDrawing())
        return Acad::eNoDatabase;
    info = new SummaryInfo(database);
    return eOk;
}

int acdbPutSummaryInfo(const AcDbDatabaseSummaryInfo* info, AcDbDatabase* database) {
    const auto* const summary = dynamic_cast<const SummaryInfo*>(info);
    if (summary == nullptr)
        return Acad::eInvalidInput;
    AcDbDatabase* const target = database != nullptr ? database : summary->database();
    if (!target->impl()->hasDrawing())
        return Acad::eNoDatabase;
    if (isSection(*target->impl())) {
        target->impl()->summary.texts = summary->content();
        return eOk;
    }
    // The record may be one of those that hang on the dictionary, or the next object to be made.
    dwg::Drawing& drawing = target->impl()->drawing;
    if (const dwg::Object* const names = drawing.namedObjects();
        names != nullptr && target->impl()->journal && names->as<dwg::Dictionary>() != nullptr) {
        target->impl()->change(names->handle);
        target->impl()->change(drawing.handleSeed());
        for (const auto& item : names->as<dwg::Dictionary>()->items) {
            if (drawing.body<dwg::DataRecord>(item.object) != nullptr)
                target->impl()->change(item.object.value);
        }
    }
    return dwg::writeSummaryRecord(target->impl()->drawing, summary->content()) ? eOk : Acad::eKeyNotFound;
}
