#include "tessaro/platform/Resources.h"

#include <algorithm>
#include <cstring>
#include <dlfcn.h>
#include <link.h>
#include <string_view>

namespace platform {
namespace {

constexpr std::string_view kOwner{"RCDATA\0", 7};

/// Names and data of notes fill whole words.
std::uint64_t Padded(std::uint64_t size) {
    return (size + 3) & ~std::uint64_t{3};
}

struct Search {
    const char* name;
    std::uintptr_t base;
    std::uint32_t number;
    std::span<const std::uint8_t> found;
};

int LookInto(dl_phdr_info* info, std::size_t, void* given) {
    auto& search = *static_cast<Search*>(given);
    if (info->dlpi_addr != search.base || std::strcmp(info->dlpi_name, search.name) != 0)
        return 0;
    for (int i = 0; i < info->dlpi_phnum && search.found.empty(); ++i) {
        const auto& segment = info->dlpi_phdr[i];
        if (segment.p_type != PT_NOTE)
            continue;
        const auto* const begin = reinterpret_cast<const std::uint8_t*>(info->dlpi_addr + segment.p_vaddr);
        search.found = FindResourceNote({begin, segment.p_memsz}, search.number);
    }
    return 1;
}

} // namespace

std::span<const std::uint8_t> FindResourceNote(std::span<const std::uint8_t> notes, std::uint32_t number) {
    while (notes.size() >= sizeof(ElfW(Nhdr))) {
        ElfW(Nhdr) head;
        std::memcpy(&head, notes.data(), sizeof head);
        notes = notes.subspan(sizeof head);
        const std::uint64_t nameSize = Padded(head.n_namesz);
        if (nameSize > notes.size() || head.n_descsz > notes.size() - nameSize)
            return {};
        const auto data = notes.subspan(nameSize, head.n_descsz);
        if (head.n_type == number && head.n_namesz == kOwner.size() &&
            std::equal(kOwner.begin(), kOwner.end(), notes.begin()))
            return data;
        notes = notes.subspan(std::min<std::uint64_t>(notes.size(), nameSize + Padded(head.n_descsz)));
    }
    return {};
}

std::span<const std::uint8_t> FindResource(void* module, std::uint32_t number) {
    link_map* map = nullptr;
    void* const executable = module == nullptr ? dlopen(nullptr, RTLD_LAZY) : nullptr;
    void* const handle = module == nullptr ? executable : module;
    const bool known = handle != nullptr && dlinfo(handle, RTLD_DI_LINKMAP, &map) == 0;
    Search search{known ? map->l_name : nullptr, known ? map->l_addr : 0, number, {}};
    if (executable != nullptr)
        dlclose(executable);
    if (known)
        dl_iterate_phdr(LookInto, &search);
    return search.found;
}

} // namespace platform
