// The settings file and its backups.
#include "tests/faults/CatalogueOperation.h"

#include "tessaro/catalogue/IniStore.h"
#include "tessaro/host/ModuleState.h"

#include <gtest/gtest.h>

#include <set>
#include <string_view>

namespace {

using faults::Operation;
using faults::Outcome;

constexpr int kBackups = 9, kOld = 100, kNew = 101;

std::string TextOf(int version) {
    const std::string number = std::to_string(version);
    return "[first]\r\nversion=" + number + "\r\n[last]\r\nempty\r\nversion=" + number + "\r\n";
}

class IniOperation : public Operation {
public:
    ~IniOperation() override { ForgetIniFile(file); }

protected:
    std::string Text() const { return Bytes("settings.ini"); }
    static std::string Backup(int number) { return "settings.bk" + std::to_string(number); }
    void WriteOld() const { Write("settings.ini", TextOf(kOld)); }

    const std::wstring file = Wide("settings.ini");
};

class ReadIni : public IniOperation {
public:
    void Prepare() override { WriteOld(); }
    void Run() override { read = ReadIniFile(file); }
    void Check(const Outcome& outcome) override {
        EXPECT_EQ(Text(), TextOf(kOld));
        EXPECT_EQ(outcome.messages, 0);
        if (!outcome.raised) {
            EXPECT_EQ(GetIniInt(L"last", L"version", -1, file), read ? kOld : -1) << "all of it or nothing";
        }
        EXPECT_TRUE(ReadIniFile(file));
        EXPECT_EQ(GetIniInt(L"first", L"version", -1, file), kOld);
    }

private:
    bool read = false;
};

class WriteIni : public IniOperation {
public:
    explicit WriteIni(bool withBackups) : backup(withBackups) {}

    void Prepare() override {
        WriteOld();
        for (int number = 1; number <= kBackups; ++number)
            Write(Backup(number), TextOf(number));
        SetIniInt(L"First", L"version", kNew, file);
        SetIniString(L"Last", L"empty", L"", file);
        SetIniInt(L"Last", L"version", kNew, file);
    }
    void Run() override { written = WriteIniFile(file, backup); }
    void Check(const Outcome& outcome) override {
        const std::string text = Text();
        EXPECT_EQ(outcome.messages, 0);
        if (written) {
            EXPECT_EQ(text, TextOf(kNew));
        } else {
            // The new file is there before it is closed, and a closing that fails is a failure.
            const bool mayBeNew = outcome.raised || outcome.count.call == std::string_view("close");
            EXPECT_TRUE(text == TextOf(kOld) || (mayBeNew && text == TextOf(kNew)) ||
                        (backup && Bytes(Backup(1)) == TextOf(kOld)))
                << text;
        }
        std::set<std::string> kept;
        for (int number = 1; number <= kBackups; ++number)
            if (Exists(Backup(number)))
                kept.insert(Bytes(Backup(number)));
        for (int number = 1; number < kBackups; ++number)
            EXPECT_TRUE(kept.contains(TextOf(number))) << "backup " << number << " went";
        for (int version : {kOld, kNew, kBackups})
            kept.erase(TextOf(version));
        EXPECT_EQ(kept.size(), kBackups - 1) << "a backup is broken";
        EXPECT_TRUE(WriteIniFile(file, false)) << "the next save is as ever";
        EXPECT_EQ(Text(), TextOf(kNew));
    }

private:
    const bool backup;
    bool written = false;
};

} // namespace

TEST(SettingsFileUnderFaults, IsReadAsAWholeOrNotAtAll) {
    faults::WalkFaults([] { return std::make_unique<ReadIni>(); });
}

TEST(SettingsFileUnderFaults, IsWrittenAsAWholeOrStays) {
    faults::WalkFaults([] { return std::make_unique<WriteIni>(false); });
}

TEST(SettingsFileUnderFaults, BackupsAreKeptButForTheOldest) {
    faults::WalkFaults([] { return std::make_unique<WriteIni>(true); });
}
