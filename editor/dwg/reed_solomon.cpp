#include "editor/dwg/reed_solomon.h"

namespace dwg {

namespace {

Result<Bytes> collect(ByteView coded, std::size_t words, std::size_t dataLength, std::size_t wordStep,
                      std::size_t byteStep) {
    if (words > coded.size() / codeWordLength)
        return Error{ErrorKind::truncated, "fewer bytes than its code words need", coded.size()};
    Bytes out;
    out.reserve(words * dataLength);
    for (std::size_t word = 0; word < words; ++word)
        for (std::size_t i = 0; i < dataLength; ++i)
            out.push_back(coded[word * wordStep + i * byteStep]);
    return out;
}

} // namespace

Result<Bytes> deinterleave(ByteView coded, std::size_t words, std::size_t dataLength) {
    return collect(coded, words, dataLength, 1, words);
}

Result<Bytes> joinWords(ByteView coded, std::size_t words, std::size_t dataLength) {
    return collect(coded, words, dataLength, codeWordLength, 1);
}

} // namespace dwg
