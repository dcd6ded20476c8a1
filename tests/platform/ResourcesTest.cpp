#include "tessaro/platform/Resources.h"

#include "tessaro/platform/SharedLibrary.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

using namespace platform;

namespace {

std::string Word(std::uint32_t value) {
    std::string bytes(4, '\0');
    std::memcpy(bytes.data(), &value, 4);
    return bytes;
}

/// A note whose name and data fill whole words.
std::string Note(const std::string& owner, std::uint32_t type, const std::string& data) {
    const auto padded = [](std::string text) {
        text.resize((text.size() + 3) / 4 * 4);
        return text;
    };
    return Word(static_cast<std::uint32_t>(owner.size())) + Word(static_cast<std::uint32_t>(data.size())) + Word(type) +
           padded(owner) + padded(data);
}

std::string Find(const std::string& notes, std::uint32_t number) {
    const auto found = FindResourceNote({reinterpret_cast<const std::uint8_t*>(notes.data()), notes.size()}, number);
    return {found.begin(), found.end()};
}

const std::string kOwner("RCDATA\0", 7);

} // namespace

TEST(Resources, ANoteIsFoundByItsOwnerAndItsNumberAmongOthers) {
    const std::string notes = Note(std::string("GNU\0", 4), 112, "another") + Note(kOwner, 5, "five!") +
                              Note(kOwner, 112, "picture") + Note(kOwner, 112, "second");
    EXPECT_EQ(Find(notes, 112), "picture");
    EXPECT_EQ(Find(notes, 5), "five!");
    EXPECT_EQ(Find(notes, 6), "");
}

TEST(Resources, ANoteThatClaimsMoreThanThereIsEndsTheSearch) {
    const std::string whole = Note(kOwner, 1, "12345678") + Note(kOwner, 2, "ab");
    for (std::size_t size = 0; size < whole.size() - 2; ++size)
        EXPECT_EQ(Find(whole.substr(0, size), 2), "") << size;
    EXPECT_EQ(Find(whole.substr(0, whole.size() - 2), 2), "ab") << "the last word need not be whole";
    EXPECT_EQ(Find(Word(0xffffffff) + Word(1) + Word(2) + kOwner + "xxxxxxxx", 2), "");
    EXPECT_EQ(Find(Word(7) + Word(0xfffffffe) + Word(2) + kOwner + "xxxxxxxx", 2), "");
}

TEST(Resources, ALoadedModuleWithoutOneGivesNothing) {
    EXPECT_TRUE(FindResource(GetModuleHandle(L"libc.so.6"), 112).empty());
    EXPECT_TRUE(FindResource(nullptr, 112).empty()) << "this program has none";
}
