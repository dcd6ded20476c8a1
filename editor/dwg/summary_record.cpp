#include "editor/dwg/summary_record.h"

#include "editor/dwg/code_page.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace dwg {

namespace {

constexpr std::wstring_view entryName = L"DWGPROPS";
constexpr std::string_view cookie = "DWGPROPS COOKIE";
constexpr std::uint16_t cookieCode = 1;
constexpr std::size_t longestText = 0x7FFF;

struct Field {
    std::uint16_t code;
    std::wstring SummaryTexts::*text;
};

constexpr std::array<Field, 7> fields = {{{2, &SummaryTexts::title},
                                          {3, &SummaryTexts::subject},
                                          {4, &SummaryTexts::author},
                                          {6, &SummaryTexts::comments},
                                          {7, &SummaryTexts::keywords},
                                          {8, &SummaryTexts::lastSavedBy},
                                          {9, &SummaryTexts::revision}}};

/// One value of the list: its code and what follows the code, as stored.
struct Value {
    std::uint16_t code = 0;
    std::vector<std::uint8_t> content;
};

bool isText(std::uint16_t code) {
    return (code >= 1 && code <= 9) || (code >= 300 && code <= 309);
}

/// The values up to one of a kind that summaries don't hold, and the bytes from there on.
std::vector<Value> splitValues(const std::vector<std::uint8_t>& data, std::vector<std::uint8_t>& rest) {
    std::vector<Value> values;
    BitReader in(data);
    while (in.remaining() > 0) {
        const std::size_t start = in.position() / 8;
        const std::uint16_t code = in.rs();
        std::size_t size = 0;
        if (isText(code)) {
            const std::size_t at = in.position();
            size = 2 + 1 + std::size_t{in.rs()};
            in.seek(at);
        } else if (code >= 40 && code <= 59) {
            size = 8;
        } else if (code >= 60 && code <= 79) {
            size = 2;
        } else if (code >= 90 && code <= 99) {
            size = 4;
        }
        const bool known = size != 0 && !in.failed() && in.remaining() / 8 >= size;
        if (!known) {
            rest.assign(data.begin() + static_cast<std::ptrdiff_t>(start), data.end());
            break;
        }
        values.push_back({code, in.bytes(size)});
    }
    return values;
}

std::wstring textOf(const Value& value, const CodePage& page) {
    BitReader in(value.content);
    const std::size_t length = in.rs();
    in.rc();
    const std::vector<std::uint8_t> bytes = in.bytes(length);
    return page.decode({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
}

Value textValue(std::uint16_t code, std::string_view bytes, std::uint16_t codePage) {
    BitWriter out;
    bytes = bytes.substr(0, longestText);
    out.rs(static_cast<std::uint16_t>(bytes.size()));
    out.rc(static_cast<std::uint8_t>(codePage));
    for (const char byte : bytes)
        out.rc(static_cast<std::uint8_t>(byte));
    return {code, out.bytes()};
}

const Dictionary* namedObjectsOf(const Drawing& drawing) {
    const Object* const object = drawing.namedObjects();
    return object == nullptr ? nullptr : object->as<Dictionary>();
}

DataRecord& makeRecord(Drawing& drawing, Object& names) {
    Object object;
    object.handle = drawing.newHandle();
    object.type = object_type::record;
    object.owner = {handle_code::softPointer, names.handle};
    object.reactors.push_back(object.owner);
    object.body = DataRecord{};
    Dictionary& dictionary = *names.as<Dictionary>();
    std::erase_if(dictionary.items, [](const Dictionary::Item& item) { return item.name == entryName; });
    dictionary.items.push_back({std::wstring(entryName), {handle_code::softOwner, object.handle}});
    names.changed();
    return *drawing.add(std::move(object))->as<DataRecord>();
}

} // namespace

Handle findSummaryRecord(const Drawing& drawing) {
    const Dictionary* const names = namedObjectsOf(drawing);
    if (names == nullptr)
        return 0;
    const Handle entry = summaryEntry(*names);
    return drawing.body<DataRecord>({0, entry}) == nullptr ? 0 : entry;
}

Handle summaryEntry(const Dictionary& names) {
    const auto item = std::ranges::find(names.items, entryName, &Dictionary::Item::name);
    return item == names.items.end() ? 0 : item->object.value;
}

SummaryTexts readSummaryRecord(const Drawing& drawing) {
    const auto* const record = drawing.body<DataRecord>({0, findSummaryRecord(drawing)});
    return record == nullptr ? SummaryTexts{} : summaryTextsOf(*record, drawing.codePage);
}

SummaryTexts summaryTextsOf(const DataRecord& record, std::uint16_t codePage) {
    SummaryTexts texts;
    const CodePage page(codePage);
    std::vector<std::uint8_t> rest;
    for (const Value& value : splitValues(record.data, rest)) {
        const auto field = std::ranges::find(fields, value.code, &Field::code);
        if (field != fields.end())
            texts.*field->text = textOf(value, page);
    }
    return texts;
}

Result<void> writeSummaryRecord(Drawing& drawing, const SummaryTexts& texts) {
    Object* const names = drawing.namedObjects();
    if (names == nullptr || names->as<Dictionary>() == nullptr)
        return Error{ErrorKind::missing, "no named-objects dictionary"};
    Object* object = drawing.find(findSummaryRecord(drawing));
    DataRecord* const found = object == nullptr ? nullptr : object->as<DataRecord>();
    DataRecord& record = found == nullptr ? makeRecord(drawing, *names) : *found;

    const CodePage page(drawing.codePage);
    std::vector<std::uint8_t> rest;
    std::vector<Value> values = splitValues(record.data, rest);
    if (values.empty())
        values.push_back(textValue(cookieCode, cookie, drawing.codePage));
    std::size_t place = 1;
    for (const Field& field : fields) {
        Value value = textValue(field.code, page.encode(texts.*field.text), drawing.codePage);
        const auto old = std::ranges::find(values, field.code, &Value::code);
        if (old != values.end()) {
            *old = std::move(value);
            place = static_cast<std::size_t>(old - values.begin()) + 1;
        } else {
            values.insert(values.begin() + static_cast<std::ptrdiff_t>(place++), std::move(value));
        }
    }
    BitWriter out;
    for (const Value& value : values) {
        out.rs(value.code);
        out.append(value.content);
    }
    out.append(rest);
    record.data = out.bytes();
    drawing.find(findSummaryRecord(drawing))->changed();
    return {};
}

void removeSummaryRecord(Drawing& drawing) {
    const Handle record = findSummaryRecord(drawing);
    if (record == 0)
        return;
    Object& names = *drawing.namedObjects();
    std::erase_if(names.as<Dictionary>()->items, [](const Dictionary::Item& item) { return item.name == entryName; });
    names.changed();
    drawing.remove(record);
}

} // namespace dwg
