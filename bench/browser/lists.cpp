// Rows of the block list: filling, sorting, scrolling, searching.
#include "bench/Harness.h"
#include "bench/browser/Application.h"
#include "bench/browser/Catalogue.h"
#include "editor/sdk/editor.h"
#include "tessaro/browser/BlockDlg.h"
#include "tessaro/browser/BlockDlgControls.h"
#include "tessaro/browser/SortBlocks.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/Text.h"

#include <QHeaderView>
#include <QScrollBar>
#include <QTreeWidget>
#include <QWindow>

#include <algorithm>
#include <array>
#include <fstream>
#include <memory>
#include <random>
#include <unistd.h>
#include <unordered_map>

namespace {

constexpr int kRows = 20'000;
constexpr double kPainting = 0.010; ///< seconds that a sort may take to show the new order
constexpr std::array kHeadings{L"Block", L"Rel", L"Comments", L"Size", L"Created", L"Modified"};

std::array<std::wstring, 6> Texts(int row) {
    const std::wstring number = std::to_wstring(row * 7919 % 100'000);
    return {BlockName(row),       L"2000", L"Description " + BlockName(row + 3), number, L"11/20/26, 22:27:13",
            L"11/20/26, 22:27:13"};
}

/// Shows the window and has it painted.
void Show(QWidget& window, QWidget& painted) {
    window.show();
    while (!window.windowHandle()->isExposed())
        QCoreApplication::processEvents();
    painted.repaint();
}

double MegabytesInMemory() {
    std::ifstream in("/proc/self/statm");
    double pages = 0;
    in >> pages >> pages;
    return pages * static_cast<double>(sysconf(_SC_PAGESIZE)) / 1e6;
}

void Fill(bench::Table& table) {
    Application::Get();
    std::vector<std::array<std::wstring, 6>> texts;
    for (int row = 0; row < kRows; ++row)
        texts.push_back(Texts(row));
    std::unique_ptr<MyList> list;
    std::unique_ptr<QTreeWidget> tree;
    const auto clear = [&] {
        list.reset();
        tree.reset();
    };
    const auto fillList = [&] {
        list = std::make_unique<MyList>(nullptr);
        for (const wchar_t* heading : kHeadings)
            list->Rows().InsertColumn(heading);
        list->resize(900, 600);
        ListModel& rows = list->Rows();
        for (int row = 0; row < kRows; ++row)
            rows.InsertRow(row, L"12345678");
        for (int row = 0; row < kRows; ++row) {
            const auto& cells = texts[static_cast<std::size_t>(row)];
            rows.SetData(row, &texts[static_cast<std::size_t>(row)]);
            rows.SetImage(row, 0);
            for (int column = 0; column < 6; ++column)
                rows.SetText(row, column, cells[static_cast<std::size_t>(column)]);
        }
        Show(*list, *list->viewport());
    };
    const auto fillTree = [&] {
        tree = std::make_unique<QTreeWidget>();
        tree->setColumnCount(6);
        tree->setUniformRowHeights(true);
        tree->setRootIsDecorated(false);
        tree->resize(900, 600);
        for (int row = 0; row < kRows; ++row) {
            auto* const item = new QTreeWidgetItem;
            const auto& cells = texts[static_cast<std::size_t>(row)];
            for (int column = 0; column < 6; ++column)
                item->setText(column, QString::fromStdWString(cells[static_cast<std::size_t>(column)]));
            item->setData(0, Qt::UserRole, row);
            tree->addTopLevelItem(item);
        }
        Show(*tree, *tree->viewport());
    };
    table.Ratio("fill and show 20,000 rows, against a tree widget", 1.5, {fillList, clear}, {fillTree, clear},
                bench::Clock::cpu);
    clear();
}

void Sort(bench::Table& table) {
    Application::Get();
    Catalogue catalogue;
    Directory* const directory = catalogue.Add(kRows, false);
    currentDirectory = directory;
    BlockDlg dialog;
    for (const wchar_t* heading : kHeadings)
        dialog.Controls().blockList->Rows().InsertColumn(heading);
    int number = 0;
    for (Block* block : directory->blocks) {
        const int row = dialog.InsertBlockRow(block->name);
        dialog.SetBlockRow(row, block->name, 0, block);
        const auto texts = Texts(number++);
        for (int column = 1; column < 6; ++column)
            dialog.SetBlockCell(row, column, texts[static_cast<std::size_t>(column)]);
    }
    dialog.Controls().blockList->setGeometry(0, 0, 900, 600);
    dialog.resize(900, 600);
    Show(dialog, *dialog.Controls().blockList->viewport());
    std::vector<Block*> shuffled(directory->blocks.begin(), directory->blocks.end());
    std::shuffle(shuffled.begin(), shuffled.end(), std::mt19937(3));
    std::unordered_map<const void*, std::size_t> places;
    for (std::size_t place = 0; place < shuffled.size(); ++place)
        places[shuffled[place]] = place;
    std::vector<Block*> pointers;
    for (int column = 0; column < 6; ++column)
        for (const bool reversed : {false, true}) {
            const int plain = SortStyleAfterClick(column, 0);
            const int before = reversed ? plain : 0;
            const auto shuffle = [&] {
                dialog.Controls().blockList->Rows().Sort(
                    [&](const void* a, const void* b) { return places.at(a) < places.at(b); });
                directory->sortStyle = before;
            };
            const auto sortRows = [&] {
                dialog.SortBlocks(column);
                dialog.Controls().blockList->viewport()->repaint();
            };
            const double work = bench::Median({sortRows, shuffle}, bench::Clock::cpu);
            const int style = directory->sortStyle;
            const auto sortPointers = [&] {
                std::sort(pointers.begin(), pointers.end(),
                          [style](const Block* a, const Block* b) { return CompareBlocks(a, b, style) < 0; });
            };
            const double floor = bench::Median({sortPointers, [&] { pointers = shuffled; }}, bench::Clock::cpu);
            table.Value("sort 20,000 rows by column " + std::to_string(column) + (reversed ? " reversed" : "") +
                            ", less 10 ms, against a plain sort",
                        std::max(0.0, work - kPainting) / floor, "times", 2);
        }
    currentDirectory = nullptr;
}

/// Notes how many rows a frame paints.
struct CountingList : MyList {
    using MyList::MyList;
    void PaintRow(QPainter& painter, int row, const QRect& bounds) override {
        ++painted;
        MyList::PaintRow(painter, row, bounds);
    }
    int painted = 0;
};

void Scroll(bench::Table& table) {
    Application::Get();
    ImageList pictures(kLargeWidth, kLargeHeight, 1, 25);
    for (int picture = 0; picture < 2000; ++picture)
        pictures.Add(PlaceholderPicture(kLargeWidth, kLargeHeight));
    CountingList list(nullptr);
    list.Rows().InsertColumn(L"Block");
    for (int row = 0; row < kRows; ++row) {
        list.Rows().InsertRow(row, BlockName(row));
        list.Rows().SetImage(row, row % 2000);
    }
    list.SetIconSpacing({142, 120});
    list.SetImages(&pictures, nullptr);
    list.SetViewBits(ListView::IconView);
    list.resize(740, 500);
    Show(list, *list.viewport());
    QScrollBar& bar = *list.verticalScrollBar();
    const int across = list.viewport()->width() / 142;
    const int visible = across * (list.viewport()->height() / 120 + 2);
    int most = 0, frames = 0;
    const double before = MegabytesInMemory();
    const double time = bench::Median({[&] {
        for (int place = 0; place < bar.maximum(); place += 400) {
            bar.setValue(place);
            list.painted = 0;
            list.viewport()->repaint();
            most = std::max(most, list.painted);
            ++frames;
        }
    }});
    table.Value("scroll the large view of 20,000: rows painted in a frame, against those in sight",
                static_cast<double>(most) / visible, "times", 1);
    table.Value("scroll the large view of 20,000: growth of memory", MegabytesInMemory() - before, "MB", 16);
    table.Note("scroll the large view of 20,000: a frame", time * 1e3 / (frames / 7.0), "ms");
}

void Find(bench::Table& table) {
    Application::Get();
    Catalogue catalogue;
    for (int directory = 0; directory < 200; ++directory)
        catalogue.Add(500, false);
    currentDirectory = directories.front();
    BlockDlg dialog;
    dialog.Controls().blockList->Rows().InsertColumn(L"Block");
    for (Block* block : directories.front()->blocks)
        dialog.SetBlockRow(dialog.InsertBlockRow(block->name), block->name, 0, block);
    int press = 0;
    const auto text = [&] { return L"zq" + std::to_wstring(press++ % 10); };
    std::size_t matches = 0;
    const auto bare = [&] {
        const std::wstring pattern = L"*" + platform::ToLower(text()) + L"*";
        for (const Directory* directory : directories)
            for (const Block* block : directory->blocks)
                if (acutWcMatch(platform::ToLower(block->name).c_str(), pattern.c_str()) == RTNORM ||
                    acutWcMatch(platform::ToLower(block->description).c_str(), pattern.c_str()) == RTNORM)
                    ++matches;
        bench::Keep(matches);
    };
    const auto keyPress = [&] { dialog.Controls().quickFind->setText(QString::fromStdWString(text())); };
    table.Ratio("Quick Find key press that matches none of 100,000 blocks, against a bare loop", 1.2, {keyPress},
                {bare}, bench::Clock::cpu);
    currentDirectory = nullptr;
}

const bench::Rows fill("fill", Fill);
const bench::Rows sort("sort", Sort);
const bench::Rows scroll("scroll", Scroll);
const bench::Rows find("find", Find);

} // namespace
