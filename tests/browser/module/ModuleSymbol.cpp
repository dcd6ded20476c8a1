#include "tests/browser/module/ModuleSymbol.h"

#include <QFile>

#include <cstring>
#include <dlfcn.h>
#include <elf.h>
#include <string_view>
#include <vector>

namespace tests {
namespace {

template <class T> std::vector<T> records(std::string_view file, std::size_t offset, std::size_t bytes) {
    if (offset > file.size() || bytes > file.size() - offset)
        return {};
    std::vector<T> read(bytes / sizeof(T));
    std::memcpy(read.data(), file.data() + offset, read.size() * sizeof(T));
    return read;
}

} // namespace

void* moduleSymbol(const void* inside, const std::string& name) {
    Dl_info module{};
    if (dladdr(inside, &module) == 0)
        return nullptr;
    QFile opened(QString::fromLocal8Bit(module.dli_fname));
    if (!opened.open(QFile::ReadOnly))
        return nullptr;
    const auto* const bytes = reinterpret_cast<const char*>(opened.map(0, opened.size()));
    if (bytes == nullptr)
        return nullptr;
    const std::string_view file(bytes, static_cast<std::size_t>(opened.size()));
    const auto heads = records<Elf64_Ehdr>(file, 0, sizeof(Elf64_Ehdr));
    if (heads.empty())
        return nullptr;
    const auto sections = records<Elf64_Shdr>(file, heads[0].e_shoff, heads[0].e_shnum * sizeof(Elf64_Shdr));
    for (const Elf64_Shdr& section : sections) {
        if (section.sh_type != SHT_SYMTAB || section.sh_link >= sections.size())
            continue;
        const auto names = records<char>(file, sections[section.sh_link].sh_offset, sections[section.sh_link].sh_size);
        for (const Elf64_Sym& symbol : records<Elf64_Sym>(file, section.sh_offset, section.sh_size))
            if (symbol.st_value != 0 && symbol.st_name < names.size() && name == names.data() + symbol.st_name)
                return static_cast<char*>(module.dli_fbase) + symbol.st_value;
    }
    return nullptr;
}

} // namespace tests
