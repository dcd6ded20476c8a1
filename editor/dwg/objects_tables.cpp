#include "editor/dwg/objects_stream.h"

/// Tables and their records.
namespace dwg {

namespace {

template <class Stream> void transferHead(Stream& s, RecordHead& head) {
    s.t(head.name);
    s.b(head.referenced);
    s.bs(head.referenceIndex);
    s.b(head.dependent);
    s.h(head.externalReference);
}

/// One byte of 1 for each insertion, 0 at the end.
template <class Stream> void transferInsertionCount(Stream& s, std::vector<HandleRef>& insertions) {
    if constexpr (Stream::reading) {
        std::size_t count = 0;
        while (s.data.rc() != 0)
            ++count;
        if (count > s.handles.remaining() / 8)
            s.handles.fail();
        else
            insertions.resize(count);
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
    s.b(body.loaded);
    s.bd3(body.basePoint);
    s.t(body.path);
    transferInsertionCount(s, body.insertions);
    s.t(body.description);
    auto previewSize = static_cast<std::uint32_t>(body.preview.size());
    s.bl(previewSize);
    s.raw(body.preview, previewSize);
    s.h(body.begin);
    if (!body.isExternalReference && !body.isOverlay) {
        s.h(body.first);
        s.h(body.last);
    }
    s.h(body.end);
    for (HandleRef& insertion : body.insertions)
        s.h(insertion);
    s.h(body.layout);
}

template <class Stream> void transfer(Stream& s, Layer& body, std::uint16_t) {
    transferHead(s, body.head);
    s.bs(body.flags);
    s.cmc(body.color);
    s.h(body.plotStyle);
    s.h(body.linetype);
}

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
    s.raw(body.texts);
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
    s.rc(body.renderMode);
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
    s.b(body.unknown);
    s.b(body.ucsPerViewport);
    s.bd3(body.ucsOrigin);
    s.bd3(body.ucsXAxis);
    s.bd3(body.ucsYAxis);
    s.bd(body.ucsElevation);
    s.bs(body.ucsOrthographicType);
    s.h(body.namedUcs);
    s.h(body.baseUcs);
}

template <class Stream> void transfer(Stream& s, ApplicationRecord& body, std::uint16_t) {
    transferHead(s, body.head);
    s.rc(body.unknown);
}

template <class Stream> void transfer(Stream& s, OtherRecord& body, std::uint16_t) {
    transferHead(s, body.head);
    s.restOfData(body.rest);
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
