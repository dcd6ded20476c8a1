#pragma once

#include "editor/application/lock_file.h"
#include "editor/application/services.h"
#include "editor/sdk/documents.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace editor {

class Editor;

/// A drawing that is open.
class Document final : public AcApDocument {
public:
    Document(std::wstring fileName, std::unique_ptr<AcDbDatabase> database, bool saved);
    ~Document() override;

    const wchar_t* fileName() const override { return path.c_str(); }
    AcDbDatabase* database() const override { return drawing.get(); }

    /// Whether there is a file of that name that the drawing came from or was saved to.
    bool hasFile() const { return fromFile; }
    /// The folder of the drawing's file with a separator at the end; the process's current folder without a file.
    std::wstring folder() const;
    /// The name without its folder.
    std::wstring title() const;
    bool isChanged() const { return changed; }
    void markChanged() { changed = true; }
    /// The release that the drawing is saved in.
    AcDb::AcDbDwgVersion version() const { return release; }
    void setVersion(AcDb::AcDbDwgVersion version) { release = version; }
    /// Opened without the right to save under its own name: the file is write-protected, or somebody has it open.
    bool isReadOnly() const { return readOnly; }
    /// Saves under a name, which becomes the drawing's own. An Acad status: eFileSharingViolation where somebody has
    /// that drawing open, eFileAccessErr for the own name of a drawing that is read-only.
    int saveAs(const std::wstring& file, AcDb::AcDbDwgVersion version);
    int locks() const { return lockCount; }

    /// Views that were left by zooming, the latest last.
    std::vector<View> views;
    /// Depths of the undo history that the user has marked, and where a group that is still open began.
    std::vector<std::size_t> undoMarks;
    std::optional<std::size_t> undoBegin;

private:
    friend class DocumentManager;
    std::wstring path;
    std::unique_ptr<AcDbDatabase> drawing;
    bool fromFile;
    bool changed = false;
    AcDb::AcDbDwgVersion release = AcDb::kDHL_1015;
    int lockCount = 0;
    bool readOnly = false;
    std::unique_ptr<LockFile> lock;
};

/// The drawings that are open, in the order of opening. Every change is told to the window.
class DocumentManager final : public AcApDocManager {
public:
    explicit DocumentManager(Editor& editor);

    /// A new empty drawing, made current; named "Drawing1.dwg", "Drawing2.dwg" ...
    Document& create();
    /// Opens a file by full path and makes it current; one that is open already is only made current. External
    /// references are looked for and read. Gives the Acad status of a failure: eFileSharingViolation, with the reason
    /// on the command line, where somebody has the drawing open and it isn't opened read-only.
    int open(const std::wstring& file, bool readOnly = false);
    /// Opens read-only what can't be opened for writing.
    int openAnyWay(const std::wstring& file);
    /// Reads the external references of a drawing that weren't read yet, and tells of each.
    void resolveReferences(Document& document);
    /// Where the file of an external reference lies: by its path, beside the drawing, on the support path.
    std::optional<std::wstring> findReference(const Document& document, const std::wstring& path) const;
    /// Closes without a question. The drawing that was current before it becomes current.
    void close(Document& document);
    Document* current() const { return active.empty() ? nullptr : active.back(); }
    const std::vector<std::unique_ptr<Document>>& all() const { return documents; }
    bool isOpen(const AcApDocument* document) const;

    AcApDocument* curDocument() const override { return current(); }
    AcApDocument* mdiActiveDocument() const override { return current(); }
    AcApDocumentIterator* newAcApDocumentIterator() override;
    /// True while no command or a session command runs, and inside executeInApplicationContext.
    bool isApplicationContext() const override;
    int activateDocument(AcApDocument* document, bool passFocus = false) override;
    void executeInApplicationContext(void (*function)(void*), void* data) const override;
    /// eNotApplicable outside of the application context.
    int appContextOpenDocument(const wchar_t* file) override;
    int lockDocument(AcApDocument* document, AcAp::DocLockMode mode = AcAp::kWrite) override;
    /// eLockViolation for a document that isn't locked.
    int unlockDocument(AcApDocument* document) override;
    // The editor keeps no resources of its own: there is nothing to push.
    void pushResourceHandle() override {}
    void popResourceHandle() override {}
    int sendStringToExecute(AcApDocument* document, const wchar_t* text, bool activate = true,
                            bool wrapUpInactiveDoc = false, bool echoString = true) override;

private:
    void add(std::unique_ptr<Document> document);
    void makeCurrent(Document* document);

    Editor& editor;
    std::vector<std::unique_ptr<Document>> documents;
    std::vector<Document*> active; // the current one last
    mutable int contexts = 0;
    int created = 0;
};

} // namespace editor
