#include "editor/dwg/objects_stream.h"

/// What objects have whatever their type.
namespace dwg {

namespace {

template <class Stream> void transferReactors(Stream& s, Object& object) {
    for (HandleRef& reactor : object.reactors)
        s.h(reactor);
}

/// From 2004 on a flag ahead tells that there is none.
template <class Stream> void transferExtensionFlag(Stream& s, Object& object, bool& missing) {
    missing = s.until(Release::r2000) ? false : object.extensionDictionary.isNull();
    if (s.since(Release::r2004))
        s.b(missing);
    if (s.since(Release::r2013))
        s.b(object.hasBinaryData);
}

template <class Stream> void transferExtension(Stream& s, Object& object, bool missing) {
    if (Stream::reading && missing)
        object.extensionDictionary = {handle_code::hardOwner};
    else if (!missing)
        s.h(object.extensionDictionary);
}

constexpr EntityExtras usualExtras{};

/// The extras, or the usual ones where an entity that is written has none.
template <class Stream> EntityExtras extrasOf(const EntityData& entity) {
    return entity.extras ? *entity.extras : usualExtras;
}

/// Material, shadow, visual styles: the data.
template <class Stream> void transferExtras(Stream& s, EntityExtras& extras) {
    if (!s.since(Release::r2007))
        return;
    s.bb(extras.materialFrom);
    s.rc(extras.shadow);
    if (!s.since(Release::r2010))
        return;
    for (HandleRef* const style : {&extras.fullStyle, &extras.faceStyle, &extras.edgeStyle}) {
        bool stored = !style->isNull();
        s.b(stored);
        // The reference comes later; until then a value that no object has stands for it.
        if (Stream::reading && stored)
            style->value = 1;
    }
}

template <class Stream> void transferStyles(Stream& s, EntityExtras& extras) {
    if (!s.since(Release::r2010))
        return;
    for (HandleRef* const style : {&extras.fullStyle, &extras.faceStyle, &extras.edgeStyle}) {
        if (!style->isNull())
            s.h(*style);
    }
}

template <class Stream> void transferEntity(Stream& s, Object& object) {
    EntityData& entity = *object.entity;
    s.bb(entity.space);
    s.sizeOfItems(object.reactors);
    bool noExtension = false;
    transferExtensionFlag(s, object, noExtension);
    bool byLayer = entity.linetypeFrom == ByWhat::layer;
    if (!s.since(Release::r2000))
        s.b(byLayer);
    if (s.until(Release::r2000))
        s.b(entity.noLinks);
    s.entityColor(entity);
    s.bd(entity.linetypeScale);
    EntityExtras extras = extrasOf<Stream>(entity);
    // A colour that was given by its index since then comes from no book.
    extras.hasBookColor = extras.hasBookColor && (Stream::reading || entity.color.hasRgb);
    if (s.since(Release::r2000)) {
        s.bb(entity.linetypeFrom);
        s.bb(entity.plotStyleFrom);
        transferExtras(s, extras);
    } else if constexpr (Stream::reading) {
        entity.linetypeFrom = byLayer ? ByWhat::layer : ByWhat::handle;
    }
    s.bs(entity.invisibility);
    if (s.since(Release::r2000))
        s.rc(entity.lineweight);

    if (entity.space == Space::owner)
        s.h(object.owner);
    transferReactors(s, object);
    transferExtension(s, object, noExtension);
    const auto links = [&] {
        if (s.until(Release::r2000) && !entity.noLinks) {
            s.h(entity.previous);
            s.h(entity.next);
        }
    };
    const auto layerAndLinetype = [&] {
        s.h(entity.layer);
        if (entity.linetypeFrom == ByWhat::handle)
            s.h(entity.linetype);
    };
    if (s.since(Release::r2000)) {
        links();
        if (s.since(Release::r2004) && extras.hasBookColor)
            s.h(extras.bookColor);
        layerAndLinetype();
        if (s.since(Release::r2007) && extras.materialFrom == ByWhat::handle)
            s.h(extras.material);
        if (s.since(Release::r2007) && extras.shadow == EntityExtras::shadowByReference)
            s.h(extras.shadowObject);
        if (entity.plotStyleFrom == ByWhat::handle)
            s.h(entity.plotStyle);
        transferStyles(s, extras);
    } else {
        layerAndLinetype();
        links();
    }
    if (Stream::reading && extras != usualExtras)
        entity.extras.make() = extras;
}

} // namespace

template <class Stream> void transferCommon(Stream& s, Object& object) {
    if (object.entity) {
        transferEntity(s, object);
        return;
    }
    s.sizeOfItems(object.reactors);
    bool noExtension = false;
    transferExtensionFlag(s, object, noExtension);
    s.h(object.owner);
    transferReactors(s, object);
    transferExtension(s, object, noExtension);
}

void readGraphics(ObjectReader& s, std::optional<std::vector<std::uint8_t>>& graphics) {
    if (!s.data.b())
        return;
    const std::uint64_t size = s.since(Release::r2010) ? s.data.bll() : s.data.rl();
    graphics = s.data.bytes(size);
}

void writeGraphics(ObjectWriter& s, const std::optional<std::vector<std::uint8_t>>& graphics) {
    s.data.b(graphics.has_value());
    if (!graphics)
        return;
    if (s.since(Release::r2010))
        s.data.bll(graphics->size());
    else
        s.data.rl(static_cast<std::uint32_t>(graphics->size()));
    s.data.append(*graphics);
}

void ObjectWriter::t(std::wstring value) {
    if (since(Release::r2007)) {
        if (closedTexts && !value.empty())
            value.push_back(L'\0');
        texts.tu(value);
        return;
    }
    std::string narrow = codePage.encode(value);
    if (closedTexts && !narrow.empty())
        narrow.push_back('\0');
    data.t(narrow);
}

template void transferCommon(ObjectReader&, Object&);
template void transferCommon(ObjectWriter&, Object&);

} // namespace dwg
