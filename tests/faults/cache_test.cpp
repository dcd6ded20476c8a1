// The cache files, and settings and caches together at start and end.
#include "tests/faults/CatalogueOperation.h"

#include "tessaro/catalogue/CacheOptions.h"
#include "tessaro/catalogue/DirCache.h"
#include "tessaro/catalogue/Directory.h"
#include "tessaro/catalogue/MainCache.h"
#include "tessaro/catalogue/Settings.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/mapping/MapScheme.h"
#include "tessaro/platform/SafeFile.h"

#include <gtest/gtest.h>

#include <array>

namespace {

using faults::CatalogueOperation;
using faults::Outcome;

constexpr int kOld = 3, kNew = 9;
const char* const kMainCache = "tessaro35.cache";
const char* const kSettings = "tessaro35.ini";
constexpr std::array kPictureFiles{"path1_35.cache", "path2_35.cache"};

class WriteCache : public CatalogueOperation {
public:
    void Prepare() override {
        Fill(kOld);
        WriteMainCache();
        Forget();
        Fill(kNew);
    }
    void Run() override { WriteMainCache(); }
    void Check(const Outcome& outcome) override {
        const int version = CachedVersion();
        EXPECT_TRUE(version == kNew || version == kOld) << version;
        if (version == kOld && !outcome.raised) {
            EXPECT_EQ(outcome.messages, 2) << "a failed save is told";
        }
        Forget();
        Fill(kNew);
        WriteMainCache();
        EXPECT_EQ(CachedVersion(), kNew) << "the next save is as ever";
    }
};

class ReadCache : public CatalogueOperation {
public:
    void Prepare() override {
        Fill(kOld);
        WriteMainCache();
        bytes = Bytes(kMainCache);
        Forget();
        demandLoadCache = 1;
    }
    ~ReadCache() override { demandLoadCache = 0; }
    void Run() override { reading = ReadMainCache(); }
    void Check(const Outcome& outcome) override {
        if (Exists(kMainCache)) {
            EXPECT_EQ(Bytes(kMainCache), bytes);
        } else {
            EXPECT_TRUE(reading.failed);
        }
        EXPECT_EQ(outcome.messages > 0, reading.failed) << "what is thrown away is told";
        if (!outcome.raised && reading.opened && !reading.failed) {
            EXPECT_EQ(directories.size(), 2u);
        }
    }

private:
    std::string bytes;
    MainCacheReading reading;
};

class SavePictures : public CatalogueOperation {
public:
    void Prepare() override {
        SaveDirCache(*Add("doors", kOld));
        Forget();
        Add("doors", kNew);
    }
    void Run() override { SaveDirCache(*directories.front()); }
    void Check(const Outcome& outcome) override {
        EXPECT_EQ(PicturesOf(*directories.front()), kNew) << "those in memory stay";
        const int version = StoredVersion();
        EXPECT_TRUE(version == kNew || version == kOld) << version;
        if (version == kOld && !outcome.raised) {
            EXPECT_EQ(outcome.messages, 2) << "a failed save is told";
        }
        Forget();
        SaveDirCache(*Add("doors", kNew));
        EXPECT_EQ(StoredVersion(), kNew) << "the next save is as ever";
    }

private:
    int StoredVersion() const {
        Directory directory;
        directory.cacheFile = Wide(kPictureFiles[0]);
        LoadDirCache(directory);
        return PicturesOf(directory);
    }
};

class LoadPictures : public CatalogueOperation {
public:
    void Prepare() override {
        Directory* const directory = Add("doors", kOld);
        SaveDirCache(*directory);
        directory->ResetImageLists(true);
        bytes = Bytes(kPictureFiles[0]);
    }
    void Run() override { LoadDirCache(*directories.front()); }
    void Check(const Outcome& outcome) override {
        Directory& directory = *directories.front();
        if (Exists(kPictureFiles[0])) {
            EXPECT_EQ(Bytes(kPictureFiles[0]), bytes);
        } else {
            EXPECT_GT(outcome.messages, 0) << "what is thrown away is told";
        }
        EXPECT_TRUE(PicturesOf(directory) == kOld ||
                    (directory.largeImages->Count() == 1 && directory.smallImages->Count() == 1));
        if (!outcome.raised) {
            EXPECT_TRUE(directory.imagesLoaded);
        }
    }

private:
    std::string bytes;
};

class MoveCaches : public CatalogueOperation {
public:
    void Prepare() override {
        std::filesystem::create_directory(Folder() / "new");
        Fill(kOld);
        for (Directory* directory : directories)
            SaveDirCache(*directory);
        WriteMainCache();
        for (const char* name : kFiles)
            bytes.push_back(Bytes(name));
    }
    void Run() override { MoveCacheFiles(Wide("new/tessaro35.cache")); }
    void Check(const Outcome& outcome) override {
        EXPECT_EQ(outcome.messages, 0) << "failures are not looked at";
        for (std::size_t file = 0; file < kFiles.size(); ++file) {
            const std::string old = kFiles[file], moved = "new/" + old;
            EXPECT_TRUE(Exists(old) || Exists(moved)) << old << " went";
            for (const std::string& name : {old, moved})
                if (Exists(name)) {
                    EXPECT_EQ(Bytes(name), bytes[file]) << name;
                }
        }
        if (!outcome.raised) {
            EXPECT_EQ(cachePath, Wide("new/tessaro35.cache"));
            EXPECT_EQ(directories.back()->cacheFile, Wide("new/path2_35.cache"));
        }
    }

private:
    static constexpr std::array kFiles{"path1_35.cache", "path2_35.cache", "tessaro35.cache"};
    std::vector<std::string> bytes;
};

/// Settings, main cache and pictures of two Directories.
class WholeCatalogue : public CatalogueOperation {
public:
    void Prepare() override {
        Fill(kOld);
        for (Directory* directory : directories)
            SaveDirCache(*directory);
        SaveIni(true);
        settings = Bytes(kSettings);
        Forget();
    }

protected:
    std::string settings;
};

class Start : public WholeCatalogue {
public:
    void Run() override { LoadIni(); }
    void Check(const Outcome& outcome) override {
        EXPECT_EQ(Bytes(kSettings), settings) << "a start writes no settings";
        if (!Exists(kMainCache)) {
            EXPECT_GT(outcome.messages, 0) << "what is thrown away is told";
        }
        Forget();
        LoadIni();
        ASSERT_EQ(directories.size(), 2u) << "the next start finds all again";
        EXPECT_EQ(directories.back()->path, Wide("windows"));
        EXPECT_EQ(directories.back()->description, std::to_wstring(kOld));
        EXPECT_EQ(schemes.size(), 1u);
    }
};

class Quit : public WholeCatalogue {
public:
    void Prepare() override {
        WholeCatalogue::Prepare();
        Fill(kNew);
        SaveIni(false);
        newSettings = Bytes(kSettings);
        Write(kSettings, settings);
    }
    void Run() override { SaveIni(true); }
    void Check(const Outcome& outcome) override {
        const std::string text = Bytes(kSettings);
        EXPECT_TRUE(text == settings || text == newSettings) << text;
        const int version = CachedVersion();
        EXPECT_TRUE(version == kNew || version == kOld) << version;
        if (version == kOld && !outcome.raised) {
            EXPECT_EQ(outcome.messages, 2) << "a failed save of the cache is told";
        }
        Forget();
        LoadIni();
        EXPECT_EQ(directories.size(), 2u) << "the next start finds all again";
    }

private:
    std::string newSettings;
};

} // namespace

TEST(CachesUnderFaults, TheMainCacheIsWrittenAsAWholeOrStaysAndThatIsTold) {
    faults::WalkFaults([] { return std::make_unique<WriteCache>(); });
}

TEST(CachesUnderFaults, AMainCacheThatCantBeReadIsDeletedAndThatIsTold) {
    faults::WalkFaults([] { return std::make_unique<ReadCache>(); });
}

TEST(CachesUnderFaults, PicturesAreWrittenAsAWholeOrStayAndThatIsTold) {
    faults::WalkFaults([] { return std::make_unique<SavePictures>(); });
}

TEST(CachesUnderFaults, PicturesThatCantBeReadAreDeletedAndThatIsTold) {
    faults::WalkFaults([] { return std::make_unique<LoadPictures>(); });
}

TEST(CachesUnderFaults, CacheFilesThatAreMovedStandInOneOfTheirPlaces) {
    faults::WalkFaults([] { return std::make_unique<MoveCaches>(); });
}

TEST(CachesUnderFaults, AStartWritesNoSettingsAndTheNextOneFindsAllAgain) {
    faults::WalkFaults([] { return std::make_unique<Start>(); });
}

TEST(CachesUnderFaults, AnEndLeavesSettingsAndCacheWholeOldOrNew) {
    faults::WalkFaults([] { return std::make_unique<Quit>(); });
}
