// Keys derived straight from a file of character weights, step by step and slowly: what the
// collation under test must agree with.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace stelvan::test {

class TextWeights {
public:
    /// The weights beside the sample files; empty where they are absent.
    static std::filesystem::path path();

    explicit TextWeights(const std::filesystem::path& csv);

    [[nodiscard]] const std::vector<char16_t>& listed() const { return listed_; }

    /// The value bytes of a text's key, ascending, without looking at lengths or blanks.
    [[nodiscard]] std::vector<std::uint8_t> key(std::u16string_view units) const;

private:
    struct Row {
        std::string kind;
        std::vector<std::uint8_t> primary;
        std::size_t elements = 0;
        std::vector<std::uint8_t> extra;
        int modifier = 0;
        int flag = 0;
    };
    [[nodiscard]] Row rowOf(char16_t unit) const;

    std::map<char16_t, Row> rows_;
    std::vector<char16_t> listed_;
};

std::vector<std::uint8_t> fromHex(const std::string& hex);
std::string toHex(const std::vector<std::uint8_t>& bytes);

}  // namespace stelvan::test
