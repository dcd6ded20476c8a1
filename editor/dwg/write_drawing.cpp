#include "editor/dwg/write_drawing.h"

#include "editor/dwg/bits.h"
#include "editor/dwg/classes.h"
#include "editor/dwg/crc.h"
#include "editor/dwg/objects_codec.h"
#include "editor/dwg/write_sections.h"

#include <limits>

namespace dwg {

namespace {

/// Offsets of the object map and its differences are signed.
constexpr std::size_t largestFile = std::numeric_limits<std::int32_t>::max();
/// What lies ahead of the first object.
constexpr std::uint32_t objectsMark = 0x0DCA;

void append(Bytes& file, ByteView bytes) {
    file.insert(file.end(), bytes.begin(), bytes.end());
}

std::uint32_t sizeOf(const Bytes& bytes) {
    return static_cast<std::uint32_t>(bytes.size());
}

/// Length, record and check of every object; gives where each begins.
Result<std::vector<ObjectPlace>> writeObjects(const Drawing& drawing, Bytes& file) {
    const ObjectContext context(drawing);
    std::vector<ObjectPlace> places;
    places.reserve(drawing.objects().size());
    BitWriter mark;
    mark.rl(objectsMark);
    append(file, mark.bytes());
    for (const auto& object : drawing.objects()) {
        if (object->handle > std::numeric_limits<std::uint32_t>::max())
            return Error{ErrorKind::invalid, "handle above 32 bits"};
        auto record = objectRecord(*object, context);
        if (!record)
            return record.error();
        if (file.size() + record->size() > largestFile)
            return Error{ErrorKind::tooLarge, "drawing above 2 GiB"};
        places.emplace_back(object->handle, sizeOf(file));
        BitWriter out;
        out.ms(sizeOf(*record));
        out.append(*record);
        out.rs(crc16(out.bytes()));
        append(file, out.bytes());
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

} // namespace

Result<Bytes> writeDrawing(Drawing& drawing, const HeaderVariables& header, const std::vector<Picture>& pictures,
                           std::uint16_t measurement) {
    if (drawing.release != Release::r2000)
        return Error{ErrorKind::unsupported, "objects of another release"};
    linkEntities(drawing);

    FileFacts facts;
    facts.codePage = drawing.codePage;
    facts.created = header.TDCREATE;
    facts.updated = header.TDUPDATE;
    facts.handleSeed = header.HANDSEED;
    facts.imageAddress = fileHeaderSize + auxHeaderSize;

    Bytes file(fileHeaderSize, 0);
    Locators locators;
    const auto place = [&](std::uint8_t number, ByteView bytes) {
        locators[number] = {number, sizeOf(file), static_cast<std::uint32_t>(bytes.size())};
        append(file, bytes);
    };
    place(locator::auxHeader, writeAuxHeader(facts));
    append(file, writeImageSection(pictures, facts.imageAddress));
    place(locator::headerVariables,
          writeGuarded(writeHeaderVariables(header, drawing.codePage), headerVariablesBegin, headerVariablesEnd));
    place(locator::classes,
          writeGuarded(encodeClasses(drawing.classes, CodePage(drawing.codePage)), classesBegin, classesEnd));
    auto places = writeObjects(drawing, file);
    if (!places)
        return places.error();
    place(locator::objectMap, writeObjectMap(*places));
    locators[locator::freeSpace] = {locator::freeSpace, 0, 0};

    // The second header repeats the locators, so the place of the measurement behind it is left out there.
    locators[locator::measurement] = {locator::measurement, 0, 0};
    append(file, writeSecondHeader(facts, locators, sizeOf(file), repeatedHandles(header)));
    BitWriter unit;
    unit.rs(0); // length of a description
    unit.rs(measurement);
    place(locator::measurement, unit.bytes());

    const Bytes head = writeFileHeader(facts, locators);
    std::copy(head.begin(), head.end(), file.begin());
    return file;
}

} // namespace dwg
