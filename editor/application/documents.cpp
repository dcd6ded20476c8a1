#include "editor/application/documents.h"

#include "editor/application/drawing.h"
#include "editor/application/editor.h"
#include "editor/application/search_path.h"
#include "editor/application/text.h"
#include "editor/database/external_references.h"
#include "editor/database/undo.h"
#include "editor/database/working_database.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <utility>

namespace editor {

namespace {

class Iterator final : public AcApDocumentIterator {
public:
    explicit Iterator(std::vector<AcApDocument*> all) : documents(std::move(all)) {}
    bool done() const override { return at >= documents.size(); }
    void step() override { ++at; }
    AcApDocument* document() const override { return done() ? nullptr : documents[at]; }

private:
    std::vector<AcApDocument*> documents;
    std::size_t at = 0;
};

// The release to save in again; files of releases that aren't written are saved in the oldest that is.
AcDb::AcDbDwgVersion versionOfFile(const std::wstring& file) {
    constexpr std::pair<const char*, AcDb::AcDbDwgVersion> marks[] = {{"AC1018", AcDb::kDHL_1800},
                                                                      {"AC1021", AcDb::kDHL_1021},
                                                                      {"AC1024", AcDb::kDHL_1024},
                                                                      {"AC1027", AcDb::kDHL_1027},
                                                                      {"AC1032", AcDb::kDHL_1032}};
    std::ifstream in(toUtf8(file), std::ios::binary);
    std::string mark(6, '\0');
    in.read(mark.data(), static_cast<std::streamsize>(mark.size()));
    for (const auto& [text, version] : marks) {
        if (mark == text)
            return version;
    }
    return AcDb::kDHL_1015;
}

} // namespace

Document::Document(std::wstring fileName, std::unique_ptr<AcDbDatabase> database, bool saved)
    : path(std::move(fileName)), drawing(std::move(database)), fromFile(saved) {
    if (saved)
        release = versionOfFile(path);
}

Document::~Document() = default;

std::wstring Document::folder() const {
    return fromFile ? folderOf(path) : joined(fullPath(L"."), L"");
}

std::wstring Document::title() const {
    return fileNameOf(path);
}

int Document::saveAs(const std::wstring& file, AcDb::AcDbDwgVersion version) {
    const bool isOwn = fromFile && sameFile(file, path);
    if (isOwn && readOnly)
        return Acad::eFileAccessErr;
    std::unique_ptr<LockFile> newLock;
    if (!isOwn || !lock) {
        std::optional<LockFile::Holder> holder;
        newLock = LockFile::take(file, holder);
        if (holder)
            return Acad::eFileSharingViolation;
    }
    if (const int status = drawing->saveAs(file.c_str(), false, version); status != eOk)
        return status;
    if (newLock)
        lock = std::move(newLock);
    readOnly = false;
    path = file;
    fromFile = true;
    changed = false;
    release = version;
    return eOk;
}

DocumentManager::DocumentManager(Editor& theEditor) : editor(theEditor) {}

Document& DocumentManager::create() {
    const std::wstring name = L"Drawing" + std::to_wstring(++created) + L".dwg";
    add(std::make_unique<Document>(name, std::make_unique<AcDbDatabase>(true), false));
    return *current();
}

namespace {

bool isWriteProtected(const std::wstring& file) {
    std::error_code failure;
    const auto rights = std::filesystem::status(std::filesystem::path(toUtf8(file)), failure).permissions();
    using std::filesystem::perms;
    return !failure && (rights & (perms::owner_write | perms::group_write | perms::others_write)) == perms::none;
}

} // namespace

int DocumentManager::open(const std::wstring& file, bool readOnly) {
    const auto found = existingFile(file);
    if (!found)
        return Acad::eFileNotFound;
    for (const auto& document : documents) {
        if (document->hasFile() && sameFile(document->path, *found)) {
            makeCurrent(document.get());
            return eOk;
        }
    }
    readOnly = readOnly || isWriteProtected(*found);
    std::unique_ptr<LockFile> lock;
    if (!readOnly) {
        std::optional<LockFile::Holder> holder;
        lock = LockFile::take(*found, holder);
        if (holder) {
            const std::wstring user = holder->user.empty() ? L"another user" : holder->user;
            const std::wstring machine = holder->machine.empty() ? L"" : L" on " + holder->machine;
            editor.console().printLine(L"\"" + *found + L"\" is currently in use by " + user + machine + L".");
            return Acad::eFileSharingViolation;
        }
    }
    auto database = std::make_unique<AcDbDatabase>(false);
    if (const int status = database->readDwgFile(found->c_str()); status != eOk)
        return status;
    auto document = std::make_unique<Document>(*found, std::move(database), true);
    document->readOnly = readOnly;
    document->lock = std::move(lock);
    if (readOnly)
        editor.console().printLine(L"\"" + *found + L"\" is opened read-only.");
    resolveReferences(*document);
    add(std::move(document));
    return eOk;
}

int DocumentManager::openAnyWay(const std::wstring& file) {
    const int status = open(file);
    return status == Acad::eFileSharingViolation ? open(file, true) : status;
}

std::optional<std::wstring> DocumentManager::findReference(const Document& document, const std::wstring& path) const {
    const std::wstring name = fileNameOf(path);
    std::vector<std::wstring> places;
    if (isFullPath(path))
        places.push_back(path);
    else
        places.push_back(joined(document.folder(), path));
    places.push_back(joined(document.folder(), name));
    for (const std::wstring& place : places) {
        if (auto found = existingFile(fullPath(place)))
            return found;
    }
    return editor.findFile(name);
}

void DocumentManager::resolveReferences(Document& document) {
    const ReferenceFinder find = [&](const std::wstring& path) { return findReference(document, path); };
    for (const ExternalReference& reference : externalReferences(*document.database())) {
        if (reference.loaded)
            continue;
        editor.console().printLine(L"Resolve Xref \"" + reference.name + L"\": " + reference.path);
        const int status = loadReference(reference.block, find);
        editor.console().printLine(status == eOk
                                       ? L"\"" + reference.name + L"\" loaded."
                                       : L"\"" + reference.path + L"\" can't be loaded: " + statusText(status) + L".");
    }
}

void DocumentManager::add(std::unique_ptr<Document> document) {
    recordUndo(*document->database());
    documents.push_back(std::move(document));
    makeCurrent(documents.back().get());
    editor.linker().send(AcRx::kLoadDwgMsg);
}

void DocumentManager::close(Document& document) {
    makeCurrent(&document);
    editor.linker().send(AcRx::kUnloadDwgMsg);
    editor.processor().dropQueued(document);
    std::erase(active, &document);
    makeCurrent(current());
    std::erase_if(documents, [&document](const auto& open) { return open.get() == &document; });
    editor.window().documentsChanged();
}

void DocumentManager::makeCurrent(Document* document) {
    if (document != nullptr) {
        std::erase(active, document);
        active.push_back(document);
    }
    setWorkingDatabase(document != nullptr ? document->database() : nullptr);
    editor.window().documentsChanged();
}

bool DocumentManager::isOpen(const AcApDocument* document) const {
    return std::any_of(documents.begin(), documents.end(),
                       [document](const auto& open) { return open.get() == document; });
}

AcApDocumentIterator* DocumentManager::newAcApDocumentIterator() {
    std::vector<AcApDocument*> all;
    for (const auto& document : documents)
        all.push_back(document.get());
    return new Iterator(std::move(all));
}

bool DocumentManager::isApplicationContext() const {
    const CommandProcessor& processor = editor.processor();
    return contexts > 0 || processor.running().empty() || processor.isSessionCommand();
}

int DocumentManager::activateDocument(AcApDocument* document, bool) {
    if (!isOpen(document))
        return Acad::eNoDocument;
    if (document != current())
        makeCurrent(static_cast<Document*>(document));
    return eOk;
}

void DocumentManager::executeInApplicationContext(void (*function)(void*), void* data) const {
    struct Context {
        int& count;
        explicit Context(int& contexts) : count(contexts) { ++count; }
        ~Context() { --count; }
    };
    if (function == nullptr)
        return;
    const Context context(contexts);
    function(data);
}

int DocumentManager::appContextOpenDocument(const wchar_t* file) {
    if (file == nullptr)
        return Acad::eInvalidInput;
    if (!isApplicationContext())
        return Acad::eNotApplicable;
    const int status = openAnyWay(fullPath(file));
    if (status != eOk)
        editor.console().printLine(L"Can't open \"" + std::wstring(file) + L"\": " + statusText(status) + L".");
    return status;
}

int DocumentManager::lockDocument(AcApDocument* document, AcAp::DocLockMode) {
    if (!isOpen(document))
        return Acad::eNoDocument;
    ++static_cast<Document*>(document)->lockCount;
    return eOk;
}

int DocumentManager::unlockDocument(AcApDocument* document) {
    if (!isOpen(document))
        return Acad::eNoDocument;
    int& count = static_cast<Document*>(document)->lockCount;
    if (count == 0)
        return Acad::eLockViolation;
    --count;
    return eOk;
}

int DocumentManager::sendStringToExecute(AcApDocument* document, const wchar_t* text, bool activate, bool,
                                         bool echoString) {
    if (text == nullptr)
        return Acad::eInvalidInput;
    if (!isOpen(document))
        return Acad::eNoDocument;
    editor.processor().queue(*static_cast<Document*>(document), text, activate, echoString);
    return eOk;
}

} // namespace editor
