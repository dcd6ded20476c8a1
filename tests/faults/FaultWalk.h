#pragma once

#include "tests/faults/preload/FaultHooks.h"
#include "tests/support/TemporaryFolder.h"

#include "tessaro/platform/UserInterface.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <string>

namespace faults {

/// One way in which calls fail.
struct Fault {
    const char* name;
    FaultOrder order; ///< without its number
};

/// What came of one run with a fault in it.
struct Outcome {
    const Fault* fault = nullptr;
    long number = 0;     ///< which call was chosen
    FaultCount count;    ///< `failed` is 0 where the run was over before
    bool raised = false; ///< the run ended in an exception
    int messages = 0;    ///< boxes that were shown
    bool fired() const { return count.failed > 0; }
    bool isAllocation() const { return fault != nullptr && fault->order.kind == FaultOrder::allocation; }
};

/// Something that is done with files and memory that may fail. Made anew for each run, in a folder of its own.
class Operation {
public:
    virtual ~Operation() = default;
    /// What is there before; may fail in no way.
    virtual void Prepare() = 0;
    /// The part in which calls fail. Exceptions end it.
    virtual void Run() = 0;
    /// Whether all is as it may be, with nothing failing any more.
    virtual void Check(const Outcome& outcome) = 0;

    const std::filesystem::path& Folder() const { return ownFolder.path(); }
    std::wstring Wide(const std::string& name) const { return (ownFolder.path() / name).wstring(); }
    std::string Bytes(const std::string& name) const { return tests::readFile(ownFolder.path() / name); }
    bool Exists(const std::string& name) const { return std::filesystem::exists(ownFolder.path() / name); }

protected:
    void Write(const std::string& name, const std::string& bytes) const { ownFolder.write(name, bytes); }

private:
    const tests::TemporaryFolder ownFolder;
};
using MakeOperation = std::function<std::unique_ptr<Operation>()>;

/// Runs the operation once without a fault and then with every call of it failing in turn, in every way. Each run must
/// end, by a return or an exception, and leave what Check allows.
///
/// With TESSARO_FAULTS=all in the environment every call is taken, until a run meets no fault; otherwise a few of them,
/// spread evenly. Prints the number of faults that were met.
void WalkFaults(const MakeOperation& make);
/// Faults that were met by this process so far.
long FaultsMet();

/// The user who is told; counts message boxes and answers without an allocation.
class CountingUser : public platform::UserInterface {
public:
    CountingUser() { platform::SetUserInterface(this); }
    ~CountingUser() override { platform::SetUserInterface(nullptr); }
    CountingUser(const CountingUser&) = delete;
    CountingUser& operator=(const CountingUser&) = delete;

    platform::MessageAnswer MessageBox(const std::wstring&, const std::wstring&, platform::MessageButtons,
                                       platform::MessageIcon) override {
        ++messages;
        return platform::MessageAnswer::Ok;
    }
    void BeginWaitCursor() override { ++waiting; }
    void EndWaitCursor() override { --waiting; }
    std::optional<std::wstring> PickFolder(const std::wstring&, const std::wstring&) override { return {}; }
    std::optional<std::wstring> PickSaveFile(const std::wstring&, const std::wstring&) override { return {}; }
    void ShowHelp(const std::wstring&) override {}

    int messages = 0;
    int waiting = 0; ///< wait cursors that are shown
};

} // namespace faults
