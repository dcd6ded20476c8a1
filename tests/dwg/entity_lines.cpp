// The lines that drawing-facts prints for entities.

#include "tests/support/TemporaryFolder.h"

#include "editor/dwg/default_drawing.h"
#include "editor/dwg/default_header.h"
#include "editor/dwg/write_drawing.h"

#include <gmock/gmock.h>

#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

#include <map>
#include <sstream>

namespace {

using namespace dwg;
using testing::HasSubstr;

struct Outcome {
    int status = -1;
    std::string out, errors;
};

Outcome printed(const QStringList& arguments) {
    QProcess process;
    process.start(TESSARO_BIN_DIR "/drawing-facts", QStringList("--entities") + arguments);
    Outcome run;
    if (!process.waitForFinished(120000))
        return run;
    run.status = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    run.out = process.readAllStandardOutput().toStdString();
    run.errors = process.readAllStandardError().toStdString();
    return run;
}

/// Circles in model space, each with its own layer, colour and linetype.
std::string fileWithCircles() {
    Drawing drawing = makeDefaultDrawing();
    auto& space = *drawing.find(drawing.modelSpace())->as<BlockHeader>();
    drawing.find(Handle{default_handle::layerZero})->as<Layer>()->head.name = L"A\tB\\C";
    const auto add = [&](std::int16_t color, ByWhat linetypeFrom) {
        Object circle;
        circle.handle = drawing.newHandle();
        circle.type = object_type::circle;
        circle.entity.emplace();
        circle.entity->layer.value = default_handle::layerZero;
        circle.entity->color = {color};
        circle.entity->linetypeFrom = linetypeFrom;
        circle.body = Circle{{}, 1};
        drawing.setOwner(circle, drawing.modelSpace());
        space.entities.push_back(circle.handle);
        drawing.add(std::move(circle));
    };
    add(256, ByWhat::layer);
    add(0, ByWhat::block);
    add(5, ByWhat::continuous);
    drawing.find(drawing.modelSpace())->changed();
    HeaderVariables header = makeDefaultHeader({2460000, 0});
    header.HANDSEED = drawing.handleSeed();
    const auto bytes = writeDrawing(drawing, header, {}, 0);
    return bytes ? std::string(bytes->begin(), bytes->end()) : std::string();
}

TEST(EntityLines, TellLayerColourAndLinetypeAndEscapeNames) {
    const tests::TemporaryFolder folder;
    const QString file = QString::fromStdString(folder.write("circles.dwg", fileWithCircles()).string());
    const Outcome run = printed({file});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.errors, file.toStdString() + ": object 10: its name holds control characters\n");
    EXPECT_THAT(run.out, HasSubstr("# " + file.toStdString() + "\n"));
    EXPECT_THAT(run.out, HasSubstr("\tCIRCLE\t"));
    EXPECT_THAT(run.out, HasSubstr("\tA\\x09B\\\\C\tBYLAYER\tBYLAYER\n"));
    EXPECT_THAT(run.out, HasSubstr("\tA\\x09B\\\\C\tBYBLOCK\tBYBLOCK\n"));
    EXPECT_THAT(run.out, HasSubstr("\tA\\x09B\\\\C\t5\tContinuous\n"));
}

TEST(EntityLines, AFileThatIsNoneIsAnErrorAndTheOthersAreStillPrinted) {
    const tests::TemporaryFolder folder;
    const QString none = QString::fromStdString(folder.write("none.dwg", "no drawing").string());
    const QString file = QString::fromStdString(folder.write("circles.dwg", fileWithCircles()).string());
    const Outcome run = printed({none, file});
    EXPECT_EQ(run.status, 1);
    EXPECT_THAT(run.errors, HasSubstr("none.dwg: not a drawing: "));
    EXPECT_THAT(run.out, HasSubstr("\tCIRCLE\t"));
    EXPECT_EQ(printed({}).status, 2);
}

/// Lines by type, as the facts count them: without parts of entities and frames.
std::map<std::string, int> countedTypes(const std::string& lines) {
    std::map<std::string, int> counts;
    std::istringstream in(lines);
    for (std::string line; std::getline(in, line);) {
        if (line.starts_with("# "))
            continue;
        const std::size_t type = line.find('\t') + 1;
        const std::string name = line.substr(type, line.find('\t', type) - type);
        const bool isPart =
            name == "ATTRIB" || name == "SEQEND" || name == "BLOCK" || name == "ENDBLK" || name.starts_with("VERTEX_");
        if (!isPart)
            ++counts[name];
    }
    return counts;
}

TEST(EntityLines, OfRealDrawingsOfEveryReleaseCountLikeTheFacts) {
    const auto folder = tests::sharedFolder("drawings");
    if (folder.empty())
        GTEST_SKIP() << "no shared drawings";
    const QJsonObject facts =
        QJsonDocument::fromJson(QByteArray::fromStdString(tests::readFile(folder / "facts.json"))).object();
    for (const char* name : {"example_r13.dwg", "example_r14.dwg", "example_2000.dwg", "example_2004.dwg",
                             "example_2007.dwg", "example_2010.dwg", "example_2013.dwg", "example_2018.dwg"}) {
        const Outcome run = printed({QString::fromStdString((folder / name).string())});
        EXPECT_EQ(run.status, 0) << name;
        EXPECT_EQ(run.errors, "") << name;
        EXPECT_THAT(run.out, testing::Not(HasSubstr("?"))) << name << ": every reference leads somewhere";
        std::map<std::string, int> expected;
        for (const QJsonValue block : facts[name].toObject()["blocks"].toObject()) {
            const QJsonObject types = block.toObject()["types"].toObject();
            for (const QString& type : types.keys())
                expected[type == "UNKNOWN_ENT" ? "ACAD_TABLE" : type.toStdString()] += types[type].toInt();
        }
        EXPECT_EQ(countedTypes(run.out), expected) << name;
    }
}

} // namespace
