#pragma once

#include "editor/dwg/bits.h"
#include "editor/dwg/color.h"

#include <array>

/// The bodies of decoded objects that aren't entities: tables, their records, dictionaries, layouts, records.
namespace dwg {

/// What the records of all tables begin with.
struct RecordHead {
    std::wstring name;
    /// Set while some object refers to the record.
    bool referenced = false;
    /// One more than the index of the external reference that the record comes from, 0 for the drawing's own.
    std::uint16_t referenceIndex = 0;
    bool dependent = false;
    /// The block record of that external reference; null for the drawing's own.
    HandleRef externalReference{handle_code::hardPointer};
    bool operator==(const RecordHead&) const = default;
};

/// A table of any type but blocks and dimension styles.
struct TableControl {
    std::vector<HandleRef> records;
    /// Further references: the two standing linetypes ByBlock and ByLayer, in this order.
    std::vector<HandleRef> standing;
    bool operator==(const TableControl&) const = default;
};

struct BlockControl {
    std::vector<HandleRef> records;
    HandleRef modelSpace{handle_code::hardOwner}, paperSpace{handle_code::hardOwner};
    bool operator==(const BlockControl&) const = default;
};

struct BlockHeader {
    RecordHead head;
    bool anonymous = false;
    bool hasAttributes = false;
    bool isExternalReference = false;
    bool isOverlay = false;
    bool loaded = false;
    Point3 basePoint;
    std::wstring path;
    std::wstring description;
    std::vector<std::uint8_t> preview;
    HandleRef begin{handle_code::hardOwner}, end{handle_code::hardOwner};
    /// Stored ends of the chain; follow from `entities` when the drawing is written.
    HandleRef first{handle_code::softPointer}, last{handle_code::softPointer};
    /// Insertions of the block. Kept as stored, and of no consequence.
    std::vector<HandleRef> insertions;
    HandleRef layout{handle_code::hardPointer};
    /// From 2007 on: units that the block is drawn in, whether it may be exploded and scaled unevenly.
    std::uint16_t units = 0;
    bool explodable = true;
    std::uint8_t evenScaling = 0;
    /// The block's entities in their order, without the frame and without parts of entities.
    std::vector<Handle> entities;
    bool operator==(const BlockHeader&) const = default;
};

struct Layer {
    static constexpr std::uint16_t frozen = 0x01;
    static constexpr std::uint16_t off = 0x02;
    static constexpr std::uint16_t frozenInNew = 0x04;
    static constexpr std::uint16_t locked = 0x08;
    static constexpr std::uint16_t plotted = 0x10;

    RecordHead head;
    /// The bits above; lineweight index from bit 5 on.
    std::uint16_t flags = plotted;
    NamedColor color{{7}};
    HandleRef plotStyle{handle_code::hardPointer};
    HandleRef linetype{handle_code::hardPointer};
    /// From 2007 and 2013 on.
    HandleRef material{handle_code::hardPointer}, visualStyle{handle_code::hardPointer};
    bool operator==(const Layer&) const = default;
};

struct Linetype {
    struct Dash {
        double length = 0;
        std::uint16_t shape = 0;
        Point2 offset;
        double scale = 0, rotation = 0;
        std::uint16_t flags = 0;
        HandleRef style{handle_code::hardPointer};
        bool operator==(const Dash&) const = default;
    };

    RecordHead head;
    std::wstring description;
    double patternLength = 0;
    std::uint8_t alignment = 'A';
    std::vector<Dash> dashes;
    /// Texts of complex dashes, as stored: 256 bytes up to 2004; from 2007 on 512 where there are such dashes, else
    /// none.
    std::vector<std::uint8_t> texts;
    static constexpr std::uint16_t hasText = 2; ///< bit of Dash::flags
    bool operator==(const Linetype&) const = default;
};

struct TextStyle {
    RecordHead head;
    bool vertical = false;
    bool isShapeFile = false;
    double fixedHeight = 0;
    double widthFactor = 1;
    double oblique = 0;
    std::uint8_t generation = 0;
    double lastHeight = 0;
    std::wstring fontFile, bigFontFile;
    bool operator==(const TextStyle&) const = default;
};

/// A record of the viewport table: a tile of the model view.
struct ViewportRecord {
    RecordHead head;
    double height = 0;
    double width = 0;
    Point2 center;
    Point3 target;
    Point3 direction = zDirection;
    double twist = 0;
    double lensLength = 50;
    double frontClip = 0, backClip = 0;
    /// Four flags: perspective, front clip, back clip, front clip at the eye.
    std::array<bool, 4> viewMode{};
    std::uint8_t renderMode = 0;
    Point2 lowerLeft, upperRight{1, 1};
    bool ucsFollow = false;
    std::uint16_t circleZoom = 100;
    bool fastZoom = true;
    std::uint8_t ucsIcon = 3;
    bool grid = false;
    Point2 gridSpacing{10, 10};
    bool snap = false;
    bool isometricSnap = false;
    std::uint16_t snapPair = 0;
    double snapRotation = 0;
    Point2 snapBase;
    Point2 snapSpacing{10, 10};
    bool unknown = false;
    bool ucsPerViewport = true;
    Point3 ucsOrigin;
    Point3 ucsXAxis{1, 0, 0}, ucsYAxis{0, 1, 0};
    double ucsElevation = 0;
    std::uint16_t ucsOrthographicType = 0;
    HandleRef namedUcs{handle_code::hardPointer}, baseUcs{handle_code::hardPointer};
    /// From 2007 on.
    bool defaultLights = true;
    std::uint8_t defaultLighting = 1;
    double brightness = 0, contrast = 0;
    NamedColor ambient{{250}};
    std::uint16_t gridFlags = 0, gridMajor = 5;
    HandleRef background{handle_code::softPointer}, visualStyle{handle_code::hardPointer}, sun{handle_code::hardOwner};

    static constexpr Point3 zDirection{0, 0, 1};
    bool operator==(const ViewportRecord&) const = default;
};

struct ApplicationRecord {
    RecordHead head;
    std::uint8_t unknown = 0;
    bool operator==(const ApplicationRecord&) const = default;
};

/// A record of the tables of views, coordinate systems, dimension styles and viewport entities: its head is decoded,
/// the rest carried.
struct OtherRecord {
    RecordHead head;
    Bits rest;
    std::vector<HandleRef> references;
    /// What follows the name in the stream of texts.
    Bits texts{};
    bool operator==(const OtherRecord&) const = default;
};

struct Dictionary {
    struct Item {
        std::wstring name;
        HandleRef object;
        bool operator==(const Item&) const = default;
    };

    /// What becomes of an entry when its dictionary is cloned.
    std::uint16_t cloning = 1;
    std::uint8_t hardOwner = 0;
    std::vector<Item> items;
    /// Class ACDBDICTIONARYWDFLT only.
    bool hasDefault = false;
    HandleRef byDefault{handle_code::hardPointer};
    bool operator==(const Dictionary&) const = default;
};

/// XRECORD: a list of typed values, kept as stored.
struct DataRecord {
    std::vector<std::uint8_t> data;
    std::uint16_t cloning = 1;
    /// Objects that the values refer to.
    std::vector<HandleRef> references;
    bool operator==(const DataRecord&) const = default;
};

struct Placeholder {
    bool operator==(const Placeholder&) const = default;
};

struct PlotSettings {
    std::wstring pageSetup, printer;
    std::uint16_t flags = 0;
    double leftMargin = 0, bottomMargin = 0, rightMargin = 0, topMargin = 0;
    double paperWidth = 0, paperHeight = 0;
    std::wstring paperSize;
    Point2 origin;
    std::uint16_t paperUnits = 0, rotation = 0, plotType = 0;
    Point2 windowMinimum, windowMaximum;
    std::wstring view;
    double realUnits = 1, drawingUnits = 1;
    std::wstring styleSheet;
    std::uint16_t scaleType = 0;
    double scale = 1;
    Point2 imageOrigin;
    /// From 2004 on: how shaded views are plotted, and a view in place of its name.
    std::uint16_t shadeMode = 0, shadeQuality = 0, shadeResolution = 300;
    HandleRef plotView{handle_code::softPointer};
    /// From 2007 on.
    HandleRef shadeStyle{handle_code::softPointer};
    bool operator==(const PlotSettings&) const = default;
};

struct Layout {
    PlotSettings plot;
    std::wstring name;
    std::uint32_t tabOrder = 0;
    std::uint16_t flags = 0;
    Point3 ucsOrigin;
    Point2 limitsMinimum, limitsMaximum;
    Point3 insertionBase;
    Point3 ucsXAxis{1, 0, 0}, ucsYAxis{0, 1, 0};
    double ucsElevation = 0;
    std::uint16_t ucsOrthographicType = 0;
    Point3 extentsMinimum, extentsMaximum;
    HandleRef blockRecord{handle_code::softPointer};
    HandleRef lastViewport{handle_code::softPointer};
    HandleRef baseUcs{handle_code::hardPointer}, namedUcs{handle_code::hardPointer};
    /// From 2004 on.
    std::vector<HandleRef> viewports;
    bool operator==(const Layout&) const = default;
};

} // namespace dwg
