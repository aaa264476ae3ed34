#include "catalog/catalog_builder.hpp"

#include <cstring>

namespace vlx::test {

void putNumber(std::vector<std::uint8_t>& bytes, std::size_t offset, std::uint32_t value)
{
    if (bytes.size() < offset + 4)
        bytes.resize(offset + 4);
    std::memcpy(bytes.data() + offset, &value, 4);
}

std::uint32_t numberAt(const std::vector<std::uint8_t>& bytes, std::size_t offset)
{
    std::uint32_t value = 0;
    std::memcpy(&value, bytes.data() + offset, 4);
    return value;
}

std::vector<std::uint8_t> CatalogFile::bytes() const
{
    std::vector<std::uint8_t> file(kCatalogHeaderSize + sets.size() * kCatalogSetSize);
    const std::uint32_t header[] = {magic, version, byteOrder,
                                    static_cast<std::uint32_t>(sets.size()),
                                    static_cast<std::uint32_t>(kCatalogHeaderSize)};
    for (std::size_t i = 0; i < std::size(header); ++i)
        putNumber(file, 4 * i, header[i]);
    std::memcpy(file.data() + 20, locale.c_str(), locale.size() + 1);
    for (std::size_t i = 0; i < sets.size(); ++i) {
        const CatalogSet& set = sets[i];
        const auto table = static_cast<std::uint32_t>(file.size());
        std::string texts;
        for (const CatalogMessage& message : set.messages) {
            const std::size_t entry = file.size();
            putNumber(file, entry, message.number);
            putNumber(file, entry + 4, static_cast<std::uint32_t>(message.text.size() + 1));
            putNumber(file, entry + 8, static_cast<std::uint32_t>(texts.size()));
            texts += message.text + '\0';
        }
        const auto block = static_cast<std::uint32_t>(file.size());
        file.insert(file.end(), texts.begin(), texts.end());
        const std::size_t record = kCatalogHeaderSize + i * kCatalogSetSize;
        const bool last = i + 1 == sets.size();
        const std::uint32_t words[] = {
            set.number,
            last ? 0 : static_cast<std::uint32_t>(record + kCatalogSetSize),
            static_cast<std::uint32_t>(set.messages.size()),
            table,
            block,
            static_cast<std::uint32_t>(texts.size()),
            0xFFFFFFFF, // not read
        };
        for (std::size_t word = 0; word < std::size(words); ++word)
            putNumber(file, record + 4 * word, words[word]);
    }
    return file;
}

} // namespace vlx::test
