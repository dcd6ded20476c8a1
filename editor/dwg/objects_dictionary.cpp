#include "editor/dwg/objects_stream.h"

/// Dictionaries, records of values, layouts, and whatever isn't decoded.
namespace dwg {

namespace {

template <class Stream> void transferPlot(Stream& s, PlotSettings& plot) {
    s.t(plot.pageSetup);
    s.t(plot.printer);
    s.bs(plot.flags);
    s.bd(plot.leftMargin);
    s.bd(plot.bottomMargin);
    s.bd(plot.rightMargin);
    s.bd(plot.topMargin);
    s.bd(plot.paperWidth);
    s.bd(plot.paperHeight);
    s.t(plot.paperSize);
    s.bd2(plot.origin);
    s.bs(plot.paperUnits);
    s.bs(plot.rotation);
    s.bs(plot.plotType);
    s.bd2(plot.windowMinimum);
    s.bd2(plot.windowMaximum);
    if (s.until(Release::r2000))
        s.t(plot.view);
    s.bd(plot.realUnits);
    s.bd(plot.drawingUnits);
    s.t(plot.styleSheet);
    s.bs(plot.scaleType);
    s.bd(plot.scale);
    s.bd2(plot.imageOrigin);
    if (s.since(Release::r2004)) {
        s.bs(plot.shadeMode);
        s.bs(plot.shadeQuality);
        s.bs(plot.shadeResolution);
        s.h(plot.plotView);
    }
    if (s.since(Release::r2007))
        s.h(plot.shadeStyle);
}

} // namespace

template <class Stream> void transfer(Stream& s, Dictionary& body, std::uint16_t) {
    s.sizeOfItems(body.items);
    // One with a default is an object of a class, stored in the same form by all releases.
    if (s.since(Release::r2000) || body.hasDefault)
        s.bs(body.cloning);
    // In R14 this byte has no meaning that is known.
    if (s.since(Release::r14) || body.hasDefault)
        s.rc(body.hardOwner);
    for (Dictionary::Item& item : body.items) {
        s.t(item.name);
        s.h(item.object);
    }
    if (body.hasDefault)
        s.h(body.byDefault);
}

template <class Stream> void transfer(Stream& s, DataRecord& body, std::uint16_t) {
    auto size = static_cast<std::uint32_t>(body.data.size());
    s.bl(size);
    s.raw(body.data, size);
    if (s.since(Release::r2000))
        s.bs(body.cloning);
    s.referencesToEnd(body.references);
}

template <class Stream> void transfer(Stream&, Placeholder&, std::uint16_t) {}

template <class Stream> void transfer(Stream& s, Layout& body, std::uint16_t) {
    transferPlot(s, body.plot);
    s.t(body.name);
    s.bl(body.tabOrder);
    s.bs(body.flags);
    s.bd3(body.ucsOrigin);
    s.rd2(body.limitsMinimum);
    s.rd2(body.limitsMaximum);
    s.bd3(body.insertionBase);
    s.bd3(body.ucsXAxis);
    s.bd3(body.ucsYAxis);
    s.bd(body.ucsElevation);
    s.bs(body.ucsOrthographicType);
    s.bd3(body.extentsMinimum);
    s.bd3(body.extentsMaximum);
    if (s.since(Release::r2004))
        s.sizeOfItems(body.viewports);
    s.h(body.blockRecord);
    s.h(body.lastViewport);
    s.h(body.baseUcs);
    s.h(body.namedUcs);
    if (s.since(Release::r2004)) {
        for (HandleRef& viewport : body.viewports)
            s.h(viewport);
    }
}

template <class Stream> void transfer(Stream& s, Carried& body, std::uint16_t) {
    s.restOfData(body.bits);
    if (s.since(Release::r2007))
        s.restOfTexts(body.texts);
    s.referencesToEnd(body.references);
}

DWG_INSTANTIATE_TRANSFER(Dictionary);
DWG_INSTANTIATE_TRANSFER(DataRecord);
DWG_INSTANTIATE_TRANSFER(Placeholder);
DWG_INSTANTIATE_TRANSFER(Layout);
DWG_INSTANTIATE_TRANSFER(Carried);

} // namespace dwg
