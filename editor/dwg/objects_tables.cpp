#include "editor/dwg/objects_owned.h"

#include <algorithm>

/// Tables and their records.
namespace dwg {

namespace {

/// In the number that stands for all three fields from 2007 on.
constexpr std::uint16_t dependentBit = 0x100;

template <class Stream> void transferHead(Stream& s, RecordHead& head) {
    s.t(head.name);
    if (s.until(Release::r2004)) {
        s.b(head.referenced);
        s.bs(head.referenceIndex);
        s.b(head.dependent);
    }
    if (s.since(Release::r2007)) {
        std::uint16_t resolution = head.dependent ? dependentBit : 0;
        s.bs(resolution);
        if constexpr (Stream::reading) {
            head.dependent = (resolution & dependentBit) != 0;
            head.referenced = true;
        }
    }
    s.h(head.externalReference);
}

/// One byte of 1 for each insertion, 0 at the end.
template <class Stream> void transferInsertionCount(Stream& s, std::vector<HandleRef>& insertions) {
    if constexpr (Stream::reading) {
        std::size_t count = 0;
        while (s.data.rc() != 0)
            ++count;
        s.resizeItems(insertions, count);
    } else if constexpr (Stream::writing) {
        for (std::size_t i = 0; i < insertions.size(); ++i)
            s.rc(1);
        s.rc(0);
    }
}

} // namespace

template <class Stream> void transfer(Stream& s, TableControl& body, std::uint16_t type) {
    s.sizeOfItems(body.records);
    for (HandleRef& record : body.records)
        s.h(record);
    if (type == object_type::linetypeControl)
        body.standing.resize(2, {handle_code::hardOwner});
    for (HandleRef& record : body.standing)
        s.h(record);
}

template <class Stream> void transfer(Stream& s, BlockControl& body, std::uint16_t) {
    s.sizeOfItems(body.records);
    for (HandleRef& record : body.records)
        s.h(record);
    s.h(body.modelSpace);
    s.h(body.paperSpace);
}

template <class Stream> void transfer(Stream& s, BlockHeader& body, std::uint16_t) {
    transferHead(s, body.head);
    s.b(body.anonymous);
    s.b(body.hasAttributes);
    s.b(body.isExternalReference);
    s.b(body.isOverlay);
    if (s.since(Release::r2000))
        s.b(body.loaded);
    const bool isReference = body.isExternalReference || body.isOverlay;
    std::size_t owned = body.entities.size();
    if (s.since(Release::r2004) && !isReference)
        transferCount(s, owned);
    s.bd3(body.basePoint);
    s.t(body.path);
    if (s.since(Release::r2000)) {
        transferInsertionCount(s, body.insertions);
        s.t(body.description);
        auto previewSize = static_cast<std::uint32_t>(body.preview.size());
        s.bl(previewSize);
        s.raw(body.preview, previewSize);
    }
    if (s.since(Release::r2007)) {
        s.bs(body.units);
        s.b(body.explodable);
        s.rc(body.evenScaling);
    }
    s.h(body.begin);
    if (s.until(Release::r2000) && !isReference) {
        s.h(body.first);
        s.h(body.last);
    }
    if (s.since(Release::r2004) && !isReference)
        transferOwned(s, body.entities, owned);
    s.h(body.end);
    if (s.since(Release::r2000)) {
        for (HandleRef& insertion : body.insertions)
            s.h(insertion);
        s.h(body.layout);
    }
}

namespace {

/// The flags of a layer in R13 and R14: four bits, the second set for a layer that is on.
template <class Stream> void transferEarlyFlags(Stream& s, std::uint16_t& flags) {
    constexpr std::uint16_t defaultLineweight = 31 << 5;
    bool isFrozen = (flags & Layer::frozen) != 0, isOn = (flags & Layer::off) == 0;
    bool frozenInNew = (flags & Layer::frozenInNew) != 0, isLocked = (flags & Layer::locked) != 0;
    s.b(isFrozen);
    s.b(isOn);
    s.b(frozenInNew);
    s.b(isLocked);
    if constexpr (Stream::reading)
        flags = static_cast<std::uint16_t>((isFrozen ? Layer::frozen : 0) | (isOn ? 0 : Layer::off) |
                                           (frozenInNew ? Layer::frozenInNew : 0) | (isLocked ? Layer::locked : 0) |
                                           Layer::plotted | defaultLineweight);
}

} // namespace

template <class Stream> void transfer(Stream& s, Layer& body, std::uint16_t) {
    transferHead(s, body.head);
    if (s.until(Release::r14))
        transferEarlyFlags(s, body.flags);
    if (s.since(Release::r2000))
        s.bs(body.flags);
    s.cmc(body.color);
    if (s.since(Release::r2000))
        s.h(body.plotStyle);
    if (s.since(Release::r2007))
        s.h(body.material);
    s.h(body.linetype);
    if (s.since(Release::r2013))
        s.h(body.visualStyle);
}

namespace {

template <class Stream> void transferTexts(Stream& s, Linetype& body) {
    constexpr std::size_t narrowSize = 256, wideSize = 512;
    const bool hasTexts =
        std::ranges::any_of(body.dashes, [](const auto& dash) { return (dash.flags & Linetype::hasText) != 0; });
    std::size_t size = s.since(Release::r2007) ? (hasTexts ? wideSize : 0) : narrowSize;
    if constexpr (Stream::writing)
        body.texts.resize(size);
    if constexpr (Stream::reading || Stream::writing)
        s.raw(body.texts, size);
}

} // namespace

template <class Stream> void transfer(Stream& s, Linetype& body, std::uint16_t) {
    // A length of two bits, a number of two, two raw offsets, two doubles of two bits, a number of two.
    constexpr std::size_t leastDash = 2 + 2 + 128 + 4 + 2;
    transferHead(s, body.head);
    s.t(body.description);
    s.bd(body.patternLength);
    s.rc(body.alignment);
    s.sizeRc(body.dashes, leastDash);
    for (Linetype::Dash& dash : body.dashes) {
        s.bd(dash.length);
        s.bs(dash.shape);
        s.rd2(dash.offset);
        s.bd(dash.scale);
        s.bd(dash.rotation);
        s.bs(dash.flags);
        s.h(dash.style);
    }
    transferTexts(s, body);
}

template <class Stream> void transfer(Stream& s, TextStyle& body, std::uint16_t) {
    transferHead(s, body.head);
    s.b(body.vertical);
    s.b(body.isShapeFile);
    s.bd(body.fixedHeight);
    s.bd(body.widthFactor);
    s.bd(body.oblique);
    s.rc(body.generation);
    s.bd(body.lastHeight);
    s.t(body.fontFile);
    s.t(body.bigFontFile);
}

template <class Stream> void transfer(Stream& s, ViewportRecord& body, std::uint16_t) {
    transferHead(s, body.head);
    s.bd(body.height);
    s.bd(body.width);
    s.rd2(body.center);
    s.bd3(body.target);
    s.bd3(body.direction);
    s.bd(body.twist);
    s.bd(body.lensLength);
    s.bd(body.frontClip);
    s.bd(body.backClip);
    for (bool& flag : body.viewMode)
        s.b(flag);
    if (s.since(Release::r2000))
        s.rc(body.renderMode);
    if (s.since(Release::r2007)) {
        s.b(body.defaultLights);
        s.rc(body.defaultLighting);
        s.bd(body.brightness);
        s.bd(body.contrast);
        s.cmc(body.ambient);
    }
    s.rd2(body.lowerLeft);
    s.rd2(body.upperRight);
    s.b(body.ucsFollow);
    s.bs(body.circleZoom);
    s.b(body.fastZoom);
    s.bb(body.ucsIcon);
    s.b(body.grid);
    s.rd2(body.gridSpacing);
    s.b(body.snap);
    s.b(body.isometricSnap);
    s.bs(body.snapPair);
    s.bd(body.snapRotation);
    s.rd2(body.snapBase);
    s.rd2(body.snapSpacing);
    if (s.since(Release::r2000)) {
        s.b(body.unknown);
        s.b(body.ucsPerViewport);
        s.bd3(body.ucsOrigin);
        s.bd3(body.ucsXAxis);
        s.bd3(body.ucsYAxis);
        s.bd(body.ucsElevation);
        s.bs(body.ucsOrthographicType);
    }
    if (s.since(Release::r2007)) {
        s.bs(body.gridFlags);
        s.bs(body.gridMajor);
        s.h(body.background);
        s.h(body.visualStyle);
        s.h(body.sun);
    }
    if (s.since(Release::r2000)) {
        s.h(body.namedUcs);
        s.h(body.baseUcs);
    }
}

template <class Stream> void transfer(Stream& s, ApplicationRecord& body, std::uint16_t) {
    transferHead(s, body.head);
    s.rc(body.unknown);
}

template <class Stream> void transfer(Stream& s, OtherRecord& body, std::uint16_t) {
    transferHead(s, body.head);
    s.restOfData(body.rest);
    if (s.since(Release::r2007))
        s.restOfTexts(body.texts);
    s.referencesToEnd(body.references);
}

DWG_INSTANTIATE_TRANSFER(TableControl);
DWG_INSTANTIATE_TRANSFER(BlockControl);
DWG_INSTANTIATE_TRANSFER(BlockHeader);
DWG_INSTANTIATE_TRANSFER(Layer);
DWG_INSTANTIATE_TRANSFER(Linetype);
DWG_INSTANTIATE_TRANSFER(TextStyle);
DWG_INSTANTIATE_TRANSFER(ViewportRecord);
DWG_INSTANTIATE_TRANSFER(ApplicationRecord);
DWG_INSTANTIATE_TRANSFER(OtherRecord);

} // namespace dwg
