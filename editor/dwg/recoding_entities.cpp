#include "editor/dwg/recoding_fields.h"

/// Entities and views that nobody here looks into.
namespace dwg::recoding {

template <class Stream> void transferFields(Stream& s, ViewportFields& f) {
    s.bd3(f.center);
    s.bd(f.width);
    s.bd(f.height);
    if (s.since(Release::r2000)) {
        s.bd3(f.target);
        s.bd3(f.direction);
        for (double* number : {&f.twist, &f.viewHeight, &f.lens, &f.front, &f.back, &f.snapAngle})
            s.bd(*number);
        for (Point2* point : {&f.viewCenter, &f.snapBase, &f.snapSpacing, &f.gridSpacing})
            s.rd2(*point);
        s.bs(f.circleZoom);
        if (s.since(Release::r2007))
            s.bs(f.gridMajor);
        s.sizeOfItems(f.frozen);
        s.bl(f.status);
        s.t(f.styleSheet);
        s.rc(f.renderMode);
        s.b(f.ucsAtOrigin);
        s.b(f.ucsPerViewport);
        s.bd3(f.ucsOrigin);
        s.bd3(f.ucsX);
        s.bd3(f.ucsY);
        s.bd(f.ucsElevation);
        s.bs(f.orthographic);
        if (s.since(Release::r2004))
            s.bs(f.shadeMode);
    }
    if (s.since(Release::r2007)) {
        s.b(f.defaultLights);
        s.rc(f.lighting);
        s.bd(f.brightness);
        s.bd(f.contrast);
        s.cmc(f.ambient);
    }
    if (s.until(Release::r14)) {
        s.h(f.header);
        return;
    }
    for (HandleRef& layer : f.frozen)
        s.h(layer);
    s.h(f.boundary);
    if (s.until(Release::r2000))
        s.h(f.header);
    s.h(f.namedUcs);
    s.h(f.baseUcs);
    if (s.since(Release::r2007))
        for (HandleRef* reference : {&f.background, &f.visualStyle, &f.shadeStyle, &f.sun})
            s.h(*reference);
}

template <class Stream> void transferFields(Stream& s, ViewFields& f) {
    s.bd(f.height);
    s.bd(f.width);
    s.rd2(f.center);
    s.bd3(f.target);
    s.bd3(f.direction);
    for (double* number : {&f.twist, &f.lens, &f.front, &f.back})
        s.bd(*number);
    for (bool& flag : f.mode)
        s.b(flag);
    if (s.since(Release::r2000))
        s.rc(f.renderMode);
    if (s.since(Release::r2007)) {
        s.b(f.defaultLights);
        s.rc(f.lighting);
        s.bd(f.brightness);
        s.bd(f.contrast);
        s.cmc(f.ambient);
    }
    s.b(f.inPaperSpace);
    if (s.since(Release::r2000))
        s.b(f.hasUcs);
    if (f.hasUcs) {
        for (Point3* point : {&f.ucsOrigin, &f.ucsX, &f.ucsY})
            s.bd3(*point);
        s.bd(f.ucsElevation);
        s.bs(f.orthographic);
    }
    if (s.since(Release::r2007)) {
        s.b(f.cameraPlotted);
        for (HandleRef* reference : {&f.background, &f.visualStyle, &f.sun})
            s.h(*reference);
    }
    if (f.hasUcs) {
        s.h(f.baseUcs);
        s.h(f.namedUcs);
    }
    if (s.since(Release::r2007))
        s.h(f.liveSection);
}

template <class Stream> void transferFields(Stream& s, ToleranceFields& f) {
    if (s.until(Release::r14)) {
        s.bs(f.unknown);
        s.bd(f.height);
        s.bd(f.gap);
    }
    s.bd3(f.insertion);
    s.bd3(f.xDirection);
    s.bd3(f.extrusion);
    s.t(f.text);
    s.h(f.style);
}

template <class Stream> void transferFields(Stream& s, ImageFields& f) {
    constexpr std::uint16_t rectangle = 1;
    s.bl(f.version);
    for (Point3& point : f.frame)
        s.bd3(point);
    s.rd2(f.size);
    s.bs(f.display);
    s.b(f.clipped);
    s.rc(f.brightness);
    s.rc(f.contrast);
    s.rc(f.fade);
    if (s.since(Release::r2010))
        s.b(f.clipOutside);
    s.bs(f.boundaryType);
    if (f.boundaryType == rectangle)
        f.boundary.resize(2);
    else
        s.sizeBl(f.boundary, 128);
    for (Point2& point : f.boundary)
        s.rd2(point);
    s.h(f.definition);
    s.h(f.reactor);
}

DWG_INSTANTIATE_FIELDS(ViewportFields);
DWG_INSTANTIATE_FIELDS(ViewFields);
DWG_INSTANTIATE_FIELDS(ToleranceFields);
DWG_INSTANTIATE_FIELDS(ImageFields);

} // namespace dwg::recoding
