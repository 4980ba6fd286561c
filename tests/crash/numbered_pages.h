// A file whose pages show in every word which unit of work wrote them, for tests that interrupt
// writing.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "jet/disk/page_file.h"

namespace stelvan::test {

class NumberedPages {
public:
    /// A file of `pages` pages, all of generation 1.
    static void create(const std::filesystem::path& path, jet::PageNumber pages);

    /// Within a unit of work: these pages show `generation`, and `added` new ones do.
    static void write(jet::PageFile& file, const std::vector<jet::PageNumber>& pages,
                      jet::PageNumber added, std::uint64_t generation);

    /// What the file holds: the generation of each page, 0 for a page that is not all of one. Page
    /// 0 is judged without the commit slots.
    static std::vector<std::uint64_t> generations(jet::PageFile& file);

    static void fill(jet::WritablePageBytes bytes, jet::PageNumber page, std::uint64_t generation);
};

/// "1 1 2 2": for messages.
std::string toText(const std::vector<std::uint64_t>& generations);

}  // namespace stelvan::test
