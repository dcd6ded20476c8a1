#include "tools/entity_lines.h"

#include "editor/dwg/facts.h"
#include "tools/json_writer.h"

#include <array>
#include <cstdio>

namespace tools {

namespace {

constexpr const char* byLayer = "BYLAYER";
constexpr const char* byBlock = "BYBLOCK";
constexpr const char* unknown = "?";

std::string hexadecimal(dwg::Handle handle) {
    std::array<char, 24> text{};
    std::snprintf(text.data(), text.size(), "%llX", static_cast<unsigned long long>(handle));
    return text.data();
}

std::string escaped(const std::wstring& name) {
    std::string text;
    for (const char letter : utf8(name)) {
        const auto code = static_cast<unsigned char>(letter);
        constexpr unsigned char firstPrintable = 0x20, deleted = 0x7F;
        if (letter == '\\') {
            text += "\\\\";
        } else if (code < firstPrintable || code == deleted) {
            std::array<char, 8> number{};
            std::snprintf(number.data(), number.size(), "\\x%02X", code);
            text += number.data();
        } else {
            text += letter;
        }
    }
    return text;
}

std::string nameOf(const dwg::Drawing& drawing, dwg::HandleRef record) {
    const dwg::Object* const object = drawing.find(record);
    const dwg::RecordHead* const head = object == nullptr ? nullptr : dwg::recordHead(*object);
    return head == nullptr ? unknown : escaped(head->name);
}

std::string colorText(const dwg::Color& color) {
    constexpr std::int16_t byLayerIndex = 256;
    if (color.hasRgb) {
        std::array<char, 8> text{};
        std::snprintf(text.data(), text.size(), "#%06X", color.rgb & 0xFFFFFFU);
        return text.data();
    }
    if (color.index == byLayerIndex)
        return byLayer;
    return color.index == 0 ? byBlock : std::to_string(color.index);
}

std::string linetypeText(const dwg::Drawing& drawing, const dwg::EntityData& entity) {
    switch (entity.linetypeFrom) {
    case dwg::ByWhat::layer:
        return byLayer;
    case dwg::ByWhat::block:
        return byBlock;
    case dwg::ByWhat::continuous:
        return "Continuous";
    case dwg::ByWhat::handle:
        break;
    }
    const std::string name = nameOf(drawing, entity.linetype);
    // R13 and R14 name the records of the two words.
    if (name == "ByLayer")
        return byLayer;
    return name == "ByBlock" ? byBlock : name;
}

} // namespace

std::string entityLines(const dwg::Drawing& drawing) {
    std::string lines;
    for (const auto& object : drawing.objects()) {
        if (!object->isEntity())
            continue;
        const dwg::EntityData& entity = *object->entity;
        for (const std::string& column :
             {hexadecimal(object->handle), dwg::typeName(drawing, *object),
              drawing.find(object->owner) == nullptr ? unknown : hexadecimal(object->owner.value),
              nameOf(drawing, entity.layer), colorText(entity.color)})
            lines += column + '\t';
        lines += linetypeText(drawing, entity) + '\n';
    }
    return lines;
}

} // namespace tools
