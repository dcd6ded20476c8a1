#include "editor/dwg/write_drawing.h"

#include "editor/dwg/bits.h"
#include "editor/dwg/classes.h"
#include "editor/dwg/crc.h"
#include "editor/dwg/guarded_section.h"
#include "editor/dwg/objects_codec.h"
#include "editor/dwg/section_names.h"
#include "editor/dwg/small_sections.h"
#include "editor/dwg/write_sections.h"

#include <algorithm>
#include <limits>

namespace dwg {

namespace {

/// What lies ahead of the first object.
constexpr std::uint32_t objectsMark = 0x0DCA;

std::uint32_t sizeOf(const Bytes& bytes) {
    return static_cast<std::uint32_t>(bytes.size());
}

/// What the length ahead of a record doesn't count: from 2010 on the size of the references.
std::size_t uncounted(Release release, ByteView record) {
    if (release < Release::r2010)
        return 0;
    BitReader head(record);
    head.umc();
    return head.position() / 8;
}

/// Length, record and check of every object; gives where each begins.
Result<std::vector<ObjectPlace>> writeObjects(const Drawing& drawing, Bytes& file) {
    const ObjectContext context(drawing);
    std::vector<ObjectPlace> places;
    places.reserve(drawing.objects().size());
    appendU32(file, objectsMark);
    for (const auto& object : drawing.objects()) {
        if (object->handle > std::numeric_limits<std::uint32_t>::max())
            return Error{ErrorKind::invalid, "handle above 32 bits"};
        const auto record = objectRecord(*object, context);
        if (!record)
            return record.error();
        if (file.size() + record->size() > largestFile)
            return Error{ErrorKind::tooLarge, "drawing above 2 GiB"};
        places.emplace_back(object->handle, sizeOf(file));
        BitWriter length;
        length.ms(static_cast<std::uint32_t>(record->size() - uncounted(drawing.release, *record)));
        const std::size_t start = file.size();
        appendBytes(file, length.bytes());
        appendBytes(file, *record);
        BitWriter check;
        check.rs(crc16(ByteView(file).subspan(start)));
        appendBytes(file, check.bytes());
    }
    return places;
}

std::array<Handle, secondHeaderHandles> repeatedHandles(const HeaderVariables& header) {
    return {header.HANDSEED,
            header.blockControl.value,
            header.layerControl.value,
            header.textStyleControl.value,
            header.linetypeControl.value,
            header.viewControl.value,
            header.ucsControl.value,
            header.viewportControl.value,
            header.applicationControl.value,
            header.dimensionStyleControl.value,
            header.viewportEntityControl.value,
            header.namedObjectsDictionary.value,
            header.multilineStyleDictionary.value,
            header.groupDictionary.value};
}

FileFacts factsOf(const Drawing& drawing, const HeaderVariables& header) {
    FileFacts facts;
    facts.codePage = drawing.codePage;
    facts.created = header.TDCREATE;
    facts.updated = header.TDUPDATE;
    facts.handleSeed = header.HANDSEED;
    return facts;
}

/// Stored neighbours matter where an entity or its owner is encoded anew: all other links were read so.
bool hasChangedLinks(const Drawing& drawing) {
    return std::ranges::any_of(drawing.objects(), [](const auto& object) {
        return object->record.empty() &&
               (object->isEntity() || object->template as<BlockHeader>() != nullptr || ownedChain(*object) != nullptr);
    });
}

Result<Bytes> writeFlatDrawing(Drawing& drawing, const DrawingParts& parts) {
    FileFacts facts = factsOf(drawing, parts.header);
    facts.imageAddress = fileHeaderSize + auxHeaderSize;

    Bytes file(fileHeaderSize, 0);
    Locators locators;
    const auto place = [&](std::uint8_t number, ByteView bytes) {
        locators[number] = {number, sizeOf(file), static_cast<std::uint32_t>(bytes.size())};
        appendBytes(file, bytes);
    };
    place(locator::auxHeader, writeAuxHeader(facts));
    appendBytes(file, writeImageSection(parts.pictures, facts.imageAddress));
    place(locator::headerVariables,
          writeGuarded(writeHeaderVariables(parts.header, drawing.codePage), headerVariablesBegin, headerVariablesEnd));
    place(locator::classes,
          writeGuarded(encodeClasses(drawing.classes, CodePage(drawing.codePage)), classesBegin, classesEnd));
    auto places = writeObjects(drawing, file);
    if (!places)
        return places.error();
    place(locator::objectMap, writeObjectMap(*places));
    locators[locator::freeSpace] = {locator::freeSpace, 0, 0};

    // The second header repeats the locators, so the place of the measurement behind it is left out there.
    locators[locator::measurement] = {locator::measurement, 0, 0};
    appendBytes(file, writeSecondHeader(facts, locators, sizeOf(file), repeatedHandles(parts.header)));
    place(locator::measurement, writeTemplate(drawing.release, parts.measurement));

    const Bytes head = writeFileHeader(facts, locators);
    std::copy(head.begin(), head.end(), file.begin());
    return file;
}

Result<Bytes> writePagedDrawing(Drawing& drawing, const DrawingParts& parts) {
    const Release release = drawing.release;
    FileContent content;
    content.release = release;
    content.start = parts.start.empty() ? makeFileStart(release, drawing.codePage) : parts.start;
    setSectionPlace(content.start, section::preview, 0);
    content.sections = parts.kept;
    const auto put = [&content](std::string_view name, Bytes bytes) {
        std::erase_if(content.sections, [&](const SectionBytes& section) { return section.name == name; });
        content.sections.push_back({std::string(name), std::move(bytes)});
    };
    const bool wideLength = hasWideLength(release, content.start[0x0B]);
    Bytes objects;
    auto places = writeObjects(drawing, objects);
    if (!places)
        return places.error();
    put(section::header, writeGuarded(writeHeaderVariables(parts.header, drawing.codePage, release),
                                      headerVariablesBegin, headerVariablesEnd, wideLength));
    put(section::classes, writeGuarded(encodeClasses(drawing.classes, CodePage(drawing.codePage), release),
                                       classesBegin, classesEnd, wideLength));
    put(section::handles, writeObjectMap(*places));
    put(section::objects, std::move(objects));
    put(section::auxHeader, writeAuxHeader(factsOf(drawing, parts.header), release));
    put(section::objectFreeSpace,
        writeObjectFreeSpace(release, static_cast<std::uint32_t>(places->size()), parts.header.TDUPDATE));
    put(section::summaryInfo, writeSummaryInfo(parts.summary, release, drawing.codePage));
    const auto missing = [&content](std::string_view name) {
        return std::ranges::find(content.sections, name, &SectionBytes::name) == content.sections.end();
    };
    if (missing(section::templateSection))
        put(section::templateSection, writeTemplate(release, parts.measurement));
    if (missing(section::revisionHistory))
        put(section::revisionHistory, writeRevisionHistory());
    if (missing(section::appInfo))
        put(section::appInfo, writeAppInfo(L"Tessaro", L"1.0"));
    if (!parts.pictures.empty())
        put(section::preview, writeImageSection(parts.pictures, 0));
    return writeFile(content);
}

} // namespace

Result<Bytes> writeDrawing(Drawing& drawing, const DrawingParts& parts) {
    if (drawing.release < Release::r2000)
        return Error{ErrorKind::unsupported, "drawings of this release aren't written"};
    if (drawing.release == Release::r2000) {
        if (hasChangedLinks(drawing))
            linkEntities(drawing);
        return writeFlatDrawing(drawing, parts);
    }
    return writePagedDrawing(drawing, parts);
}

Result<Bytes> writeDrawing(Drawing& drawing, const HeaderVariables& header, const std::vector<Picture>& pictures,
                           std::uint16_t measurement) {
    DrawingParts parts;
    parts.header = header;
    parts.pictures = pictures;
    parts.measurement = measurement;
    return writeDrawing(drawing, parts);
}

} // namespace dwg
