#include "tests/catalogue/SettingsFixture.h"

#include "tessaro/catalogue/Settings.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/mapping/MapScheme.h"

#include <array>

using catalogue_tests::SettingsTest;

namespace {

class SettingsKeys : public SettingsTest {
protected:
    const MapScheme& LoadScheme(const std::string& lines) {
        DeleteSchemes();
        Load("[Schemes]\nNumSchemes=1\nScheme1=S\n[S]\n" + lines);
        return **schemes.Lookup(L"S");
    }
    std::string Saved(const std::string& key) {
        SaveIni(false);
        return Value("/d", key);
    }
    std::string SavedScheme(const std::string& key) {
        SaveIni(false);
        return Value("s", key);
    }
};

struct Number {
    const char* key;
    int* setting;
    int defaultValue;
};

const Number kNumbers[] = {{"column1width", &columnWidths[0], 140},
                           {"column2width", &columnWidths[1], 35},
                           {"column3width", &columnWidths[2], 150},
                           {"column4width", &columnWidths[3], 60},
                           {"column5width", &columnWidths[4], 105},
                           {"column6width", &columnWidths[5], 105},
                           {"blockinsert", &blockInsert, 0},
                           {"readdireverytime", &readDirEveryTime, 0},
                           {"overlayxref", &overlayXRef, 0},
                           {"demandloadcache", &demandLoadCache, 0},
                           {"onlycachecurrent", &onlyCacheCurrent, 0},
                           {"delcachememoryonclose", &delCacheMemoryOnClose, 0},
                           {"backupini", &backupIni, 0},
                           {"printscale", &printScale, 4},
                           {"printtype", &printType, 0}};

struct Flag {
    const char* key;
    bool DirectorySettings::*field;
    bool defaultValue;
};

constexpr Flag kFlags[] = {{"explode", &DirectorySettings::explode, false},
                           {"multipleinsert", &DirectorySettings::multipleInsert, false},
                           {"repeat", &DirectorySettings::repeat, false},
                           {"showinsertionpoints", &DirectorySettings::showInsPts, true},
                           {"uselargeimages", &DirectorySettings::useLargeImages, true}};

} // namespace

TEST_F(SettingsKeys, EachOptionIsReadWithItsDefaultAndWritten) {
    Load("");
    for (const Number& number : kNumbers)
        EXPECT_EQ(*number.setting, number.defaultValue) << number.key;
    std::string text = "[TESSARO Options]\n";
    int value = 11;
    for (const Number& number : kNumbers)
        text += std::string(number.key) + "=" + std::to_string(value++) + "\n";
    Load(text);
    value = 11;
    for (const Number& number : kNumbers)
        EXPECT_EQ(*number.setting, value++) << number.key;
    SaveIni(false);
    value = 11;
    for (const Number& number : kNumbers)
        EXPECT_EQ(Value("tessaro options", number.key), std::to_string(value++)) << number.key;
}

TEST_F(SettingsKeys, OptionsAreWrittenInTheirOrder) {
    Load("");
    cachePath = L"/Cache/Here.cache";
    SaveIni(false);
    const char* const keys[] = {"column1width",          "column2width", "column3width",    "column4width",
                                "column5width",          "column6width", "cachefile",       "blockinsert",
                                "readdireverytime",      "overlayxref",  "demandloadcache", "onlycachecurrent",
                                "delcachememoryonclose", "backupini",    "printscale",      "printtype"};
    const auto lines = Section("tessaro options");
    ASSERT_EQ(lines.size(), std::size(keys));
    for (std::size_t i = 0; i < lines.size(); ++i)
        EXPECT_EQ(lines[i].substr(0, lines[i].find('=')), keys[i]);
    EXPECT_EQ(Value("tessaro options", "cachefile"), "/Cache/Here.cache");
}

TEST_F(SettingsKeys, PrintOptionsDefaultToTheirCurrentValues) {
    printScale = 9;
    printType = 2;
    Load("");
    EXPECT_EQ(printScale, 9);
    EXPECT_EQ(printType, 2);
}

TEST_F(SettingsKeys, ACacheFileThatIsNotEmptyReplacesThePath) {
    const std::wstring before = cachePath;
    Load("[Tessaro Options]\nCacheFile=\n");
    EXPECT_EQ(cachePath, before);
    Load("[Tessaro Options]\nCacheFile=/Other/My.cache\n[Paths]\nNumPaths=1\nPath1=/d\n");
    EXPECT_EQ(cachePath, L"/Other/My.cache");
    EXPECT_EQ(directories.front()->cacheFile, L"/Other/path1_35.cache");
}

TEST_F(SettingsKeys, WidthsOfTheDirectoryListAreNotPersistent) {
    dirColumnWidths = {1, 2, 3};
    Load("[Tessaro Options]\nDColumnWidth1=7\nColumnWidth1=8\n");
    EXPECT_EQ(dirColumnWidths, (std::array<int, 3>{80, 40, 20}));
    EXPECT_EQ(columnWidths[0], 140);
    SaveIni(false);
    EXPECT_EQ(Disk().find("dcolumn"), std::string::npos);
    EXPECT_EQ(Disk().find("columnwidth"), std::string::npos);
}

TEST_F(SettingsKeys, UseCompressionHasNoKey) {
    Load("[Tessaro Options]\nUseCompression=0\n");
    EXPECT_EQ(useCompression, 1);
    SaveIni(false);
    EXPECT_EQ(Disk().find("compression"), std::string::npos);
}

TEST_F(SettingsKeys, ADescriptionIsAnyTextAndAbsentGivesEmpty) {
    EXPECT_EQ(LoadDirectory("Description=Some; Chairs, = \n").description, L"Some; Chairs, =");
    EXPECT_EQ(Saved("description"), "Some; Chairs, =");
    EXPECT_EQ(LoadDirectory("").description, L"");
    EXPECT_EQ(Saved("description"), "");
}

TEST_F(SettingsKeys, ScaleHasFourWords) {
    const char* const words[] = {"1-to-1", "Drawing", "Prompt", "User"};
    for (int mode = 0; mode < 4; ++mode) {
        EXPECT_EQ(LoadDirectory(std::string("Scale=") + words[mode] + "\n").scaleMode, mode);
        EXPECT_EQ(Saved("scale"), words[mode]);
    }
    EXPECT_EQ(LoadDirectory("scale=DRAWING\n").scaleMode, 1);
    EXPECT_EQ(LoadDirectory("Scale=2\n").scaleMode, 0) << "an unknown word leaves the default";
    EXPECT_EQ(LoadDirectory("Scale=\n").scaleMode, 0);
    directories.front()->scaleMode = 4;
    EXPECT_EQ(Saved("scale"), "absent") << "a mode without a word";
}

TEST_F(SettingsKeys, RotationIsPromptOrANumber) {
    const Directory* directory = &LoadDirectory("Rotation=12.5\n");
    EXPECT_EQ(directory->rotationMode, 0);
    EXPECT_EQ(directory->rotationAngle, 12.5);
    EXPECT_EQ(Saved("rotation"), "12.500000");
    directory = &LoadDirectory("Rotation=pROMPT\n");
    EXPECT_EQ(directory->rotationMode, 1);
    EXPECT_EQ(directory->rotationAngle, 0.0);
    EXPECT_EQ(Saved("rotation"), "Prompt");
    directory = &LoadDirectory("Rotation=abc\n");
    EXPECT_EQ(directory->rotationMode, 0);
    EXPECT_EQ(directory->rotationAngle, 0.0);
    directory = &LoadDirectory("Rotation=\n");
    EXPECT_EQ(directory->rotationMode, 0);
    directories.front()->rotationMode = 2;
    directories.front()->rotationAngle = -1;
    EXPECT_EQ(Saved("rotation"), "-1.000000") << "for every mode other than 1";
}

TEST_F(SettingsKeys, FlagsAreYesOrNoAndOtherWordsLeaveTheDefault) {
    for (const Flag& flag : kFlags) {
        const std::string key = flag.key;
        EXPECT_TRUE(LoadDirectory(key + "=yES\n").*flag.field) << key;
        EXPECT_EQ(Saved(key), "Yes");
        EXPECT_FALSE(LoadDirectory(key + "=No\n").*flag.field) << key;
        EXPECT_EQ(Saved(key), "No");
        for (const char* const other : {"", "1", "True", "Yes!"})
            EXPECT_EQ(LoadDirectory(key + "=" + other + "\n").*flag.field, flag.defaultValue) << key << other;
    }
}

TEST_F(SettingsKeys, ViewIsAnIntegerThatIsAlwaysSet) {
    EXPECT_EQ(LoadDirectory("View=1\n").viewMode, 1);
    EXPECT_EQ(Saved("view"), "1");
    EXPECT_EQ(LoadDirectory("").viewMode, 3);
    EXPECT_EQ(LoadDirectory("View=\n").viewMode, 0);
}

TEST_F(SettingsKeys, SortStylesHaveFourteenWordsAndTwoShortOnes) {
    const char* const words[] = {"None",           "Name",    "Type",        "Description", "Size",
                                 "Modified",       "Created", "RevNone",     "RevName",     "RevType",
                                 "RevDescription", "RevSize", "RevModified", "RevCreated"};
    for (int code = 0; code < 14; ++code) {
        EXPECT_EQ(LoadDirectory(std::string("SortStyle=") + words[code] + "\n").sortStyle, code);
        EXPECT_EQ(Saved("sortstyle"), words[code]);
    }
    EXPECT_EQ(LoadDirectory("SortStyle=DATE\n").sortStyle, 6);
    EXPECT_EQ(Saved("sortstyle"), "Created");
    EXPECT_EQ(LoadDirectory("SortStyle=Desc\n").sortStyle, 3);
    EXPECT_EQ(Saved("sortstyle"), "Description");
    for (const char* const other : {"", "RevDesc", "RevDate", "6"})
        EXPECT_EQ(LoadDirectory(std::string("SortStyle=") + other + "\n").sortStyle, 1) << other;
    directories.front()->sortStyle = 14;
    EXPECT_EQ(Saved("sortstyle"), "absent");
    directories.front()->sortStyle = -1;
    EXPECT_EQ(Saved("sortstyle"), "absent");
}

TEST_F(SettingsKeys, CurrentSchemeIsAlwaysSet) {
    EXPECT_EQ(LoadDirectory("CurrentScheme=Walls\n").schemeName, L"Walls");
    EXPECT_EQ(Saved("currentscheme"), "Walls");
    EXPECT_EQ(LoadDirectory("").schemeName, L"") << "absent replaces <None>";
}

TEST_F(SettingsKeys, ADirectorysKeysAreWrittenInTheirOrder) {
    LoadDirectory("");
    SaveIni(false);
    EXPECT_EQ(Section("/d"),
              (std::vector<std::string>{"description", "scale=1-to-1", "rotation=0.000000", "explode=No",
                                        "multipleinsert=No", "repeat=No", "showinsertionpoints=Yes",
                                        "uselargeimages=Yes", "view=3", "sortstyle=Name", "currentscheme"}));
}

TEST_F(SettingsKeys, SchemeTypesHaveFourWords) {
    const char* const words[] = {"Layer", "Linetype", "Color", "Block"};
    for (int type = 0; type < 4; ++type) {
        EXPECT_EQ(LoadScheme(std::string("Type=") + words[type] + "\n").schemeType, type);
        EXPECT_EQ(SavedScheme("type"), words[type]);
    }
    EXPECT_EQ(LoadScheme("Type=cOLOR\n").schemeType, 2);
    EXPECT_EQ(LoadScheme("Type=Other\n").schemeType, 0);
    (*schemes.Lookup(L"S"))->schemeType = 4;
    EXPECT_EQ(SavedScheme("type"), "absent");
}

TEST_F(SettingsKeys, DefaultToByLayerIsTrueForYesAlone) {
    EXPECT_TRUE(LoadScheme("DefaultToByLayer=yes\n").defaultToByLayer);
    EXPECT_EQ(SavedScheme("defaulttobylayer"), "Yes");
    EXPECT_FALSE(LoadScheme("DefaultToByLayer=No\n").defaultToByLayer);
    EXPECT_EQ(SavedScheme("defaulttobylayer"), "No");
    EXPECT_FALSE(LoadScheme("DefaultToByLayer=1\n").defaultToByLayer);
    EXPECT_FALSE(LoadScheme("").defaultToByLayer) << "absent too, unlike the record's own default";
}

TEST_F(SettingsKeys, UnknownTypesHaveThreeWords) {
    const std::pair<const char*, int> words[] = {{"Ask", 1}, {"Ignore", 0}, {"Specific", 2}};
    for (const auto& [word, mode] : words) {
        EXPECT_EQ(LoadScheme(std::string("UnknownType=") + word + "\n").unknownMode, mode);
        EXPECT_EQ(SavedScheme("unknowntype"), word);
    }
    EXPECT_EQ(LoadScheme("UnknownType=SPECIFIC\n").unknownMode, 2);
    EXPECT_EQ(LoadScheme("UnknownType=Other\n").unknownMode, 0);
}

TEST_F(SettingsKeys, AnUnknownValueIsReadAndWrittenForSpecificAlone) {
    const MapScheme* scheme = &LoadScheme("UnknownType=Specific\nUnknownVal=A-WALL\n");
    EXPECT_EQ(scheme->unknownValue, L"A-WALL");
    EXPECT_FALSE(scheme->unknownIsVariable);
    EXPECT_EQ(SavedScheme("unknownval"), "A-WALL");
    scheme = &LoadScheme("UnknownType=Specific\nUnknownVal=vAR:H_Lyr\n");
    EXPECT_EQ(scheme->unknownValue, L"H_Lyr");
    EXPECT_TRUE(scheme->unknownIsVariable);
    EXPECT_EQ(SavedScheme("unknownval"), "Var:H_Lyr");
    scheme = &LoadScheme("UnknownType=Ask\nUnknownVal=Var:H_Lyr\n");
    EXPECT_EQ(scheme->unknownValue, L"");
    EXPECT_FALSE(scheme->unknownIsVariable);
    EXPECT_EQ(SavedScheme("unknownval"), "absent");
}

TEST_F(SettingsKeys, MapsSplitAtTheirFirstCommaWithTheFromTextInUpperCase) {
    const MapScheme& scheme = LoadScheme("NumMaps=3\nMap1=a-*,Wall, thick\nMap2=B,vaR:Lyr\nMap3=C,Var\n");
    ASSERT_EQ(scheme.maps.size(), 3u);
    EXPECT_EQ(*scheme.maps.Lookup(L"A-*"), L"Wall, thick");
    EXPECT_EQ(*scheme.maps.Lookup(L"B"), L"Lyr");
    EXPECT_EQ(*scheme.maps.Lookup(L"C"), L"Var");
    EXPECT_NE(scheme.variableMaps.Lookup(L"B"), nullptr);
    EXPECT_EQ(scheme.variableMaps.size(), 1u);
    SaveIni(false);
    EXPECT_EQ(Value("s", "nummaps"), "3");
    EXPECT_EQ(Value("s", "map1"), "A-*,Wall, thick");
    EXPECT_EQ(Value("s", "map2"), "B,Var:Lyr");
    EXPECT_EQ(Value("s", "map3"), "C,Var");
}

TEST_F(SettingsKeys, AFromTextThatIsNotUpperCaseLosesItsVariableAtTheNextSave) {
    const MapScheme& scheme = LoadScheme("NumMaps=1\nMap1=walls,Var:Lyr\n");
    EXPECT_EQ(*scheme.maps.Lookup(L"WALLS"), L"Lyr");
    EXPECT_NE(scheme.variableMaps.Lookup(L"walls"), nullptr) << "noted as it stands in the file";
    EXPECT_EQ(SavedScheme("map1"), "WALLS,Lyr");
}

TEST_F(SettingsKeys, AMapWithoutACommaIsAllToText) {
    const MapScheme& scheme = LoadScheme("NumMaps=1\nMap1=nothing\n");
    ASSERT_EQ(scheme.maps.size(), 1u);
    EXPECT_EQ(*scheme.maps.Lookup(L""), L"nothing");
    EXPECT_EQ(SavedScheme("map1"), ",nothing");
    EXPECT_EQ(*LoadScheme("NumMaps=1\nMap1=Var:Lyr\n").maps.Lookup(L""), L"Lyr");
    EXPECT_EQ(SavedScheme("map1"), ",Var:Lyr");
}

TEST_F(SettingsKeys, MissingMapsCountAsEmptyAndMapsBeyondTheNumberAreIgnored) {
    const MapScheme& scheme = LoadScheme("NumMaps=4\nMap2=A,B\nMap5=C,D\n");
    ASSERT_EQ(scheme.maps.size(), 2u);
    EXPECT_EQ(*scheme.maps.Lookup(L""), L"");
    EXPECT_EQ(*scheme.maps.Lookup(L"A"), L"B");
}

TEST_F(SettingsKeys, ASchemesKeysAreWrittenInTheirOrder) {
    LoadScheme("UnknownType=Specific\nUnknownVal=X\nNumMaps=1\nMap1=A,B\n");
    SaveIni(false);
    EXPECT_EQ(Section("s"), (std::vector<std::string>{"type=Layer", "defaulttobylayer=No", "unknowntype=Specific",
                                                      "unknownval=X", "nummaps=1", "map1=A,B"}));
    EXPECT_EQ(Section("schemes"), (std::vector<std::string>{"numschemes=1", "scheme1=S"}));
}

TEST_F(SettingsKeys, NumbersBeyondWhatAFileHoldsCostNothing) {
    Load("[Paths]\nNumPaths=2147483647\nPath1=/a\nPath2147483647=/z\n[Schemes]\nNumSchemes=2147483647\nScheme1=S\n"
         "[S]\nNumMaps=2147483647\nMap7=A,B\n");
    EXPECT_EQ(Paths(), (std::vector<std::wstring>{L"/a", L"", L"/z"}));
    EXPECT_EQ(schemes.size(), 2u) << "S and the empty name";
    EXPECT_EQ((*schemes.Lookup(L"S"))->maps.size(), 2u);
    for (const char* const number : {"0", "-1", "-2147483648", "x"}) {
        for (Directory* directory : directories)
            delete directory;
        directories.clear();
        Load(std::string("[Paths]\nNumPaths=") + number + "\nPath1=/a\n");
        EXPECT_TRUE(directories.empty()) << number;
    }
}
