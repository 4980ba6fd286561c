#include "tests/models/damaged_files.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <random>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "data/builder/table_text.h"
#include "jet/disk/memory_pages.h"
#include "jet/index/index_page.h"
#include "jet/pages/data_page.h"
#include "jet/pages/fixed_pages.h"
#include "jet/pages/header.h"
#include "jet/pages/long_value.h"
#include "jet/pages/usage_map.h"
#include "jet/rows/row_codec.h"
#include "jet/tables/catalog.h"
#include "jet/tables/definition_format.h"
#include "jet/tables/table_scan.h"

namespace stelvan::data::test {
namespace {

namespace fs = std::filesystem;
using jet::PageNumber;
using Bytes = std::vector<std::uint8_t>;

/// The whole file, its pages open to be spoilt.
class Spoiler {
public:
    explicit Spoiler(const Bytes& whole)
        : file_(std::make_shared<jet::MemoryPages>(whole)), scope_(file_), catalog_(*file_) {}

    [[nodiscard]] std::shared_ptr<const jet::TableDef> table(const char* name) {
        return catalog_.definition(*catalog_.findTable(name));
    }
    [[nodiscard]] std::vector<PageNumber> dataPages(const jet::TableDef& table) {
        std::vector<PageNumber> pages;
        const jet::UsageMap owned(*file_, table.ownedMap);
        for (auto page = owned.next(0); page; page = owned.next(*page + 1)) pages.push_back(*page);
        return pages;
    }
    [[nodiscard]] jet::PageFile& pages() { return *file_; }
    [[nodiscard]] jet::WritablePageBytes edit(PageNumber page) { return file_->edit(page); }
    [[nodiscard]] Bytes result() const { return file_->file(); }

private:
    std::shared_ptr<jet::MemoryPages> file_;
    jet::WriteScope scope_;
    jet::Catalog catalog_;
};

Bytes bytesOf(std::string_view text) {
    return {text.begin(), text.end()};
}

Bytes withHead(Bytes bytes, std::string_view engine, std::uint8_t version) {
    std::ranges::copy(engine, bytes.begin() + jet::header::kEngineName);
    bytes[jet::header::kVersion] = version;
    return bytes;
}

Bytes shortened(Bytes bytes, std::size_t size) {
    if (bytes.size() <= size) throw std::runtime_error("the model is too small to be cut");
    bytes.resize(size);
    return bytes;
}

Bytes withNoiseForACatalogue(const Bytes& whole) {
    Spoiler file(whole);
    std::mt19937 random(97);
    jet::Catalog catalog(file.pages());
    const auto objects = catalog.definitionAt(jet::kObjectsPage);
    for (const PageNumber page : file.dataPages(*objects)) {
        std::ranges::generate(file.edit(page), [&] { return static_cast<std::uint8_t>(random()); });
    }
    return file.result();
}

/// The definition names itself as its next page, index leaves name themselves as neighbours.
Bytes withARing(const Bytes& whole) {
    Spoiler file(whole);
    const auto variables = file.table("secs_cusvar");
    for (const jet::RealIndexDef& tree : variables->trees) {
        jet::putU32(file.edit(tree.root), jet::index_page::kNext, tree.root);
    }
    jet::putU32(file.edit(variables->page), jet::definition::kNext, variables->page);
    return file.result();
}

Bytes withImpossibleRows(const Bytes& whole) {
    Spoiler file(whole);
    for (const PageNumber page : file.dataPages(*file.table("secs_cusvar"))) {
        jet::putU16(file.edit(page), jet::data_page::kSlotCount, 4000);
    }
    for (const PageNumber page : file.dataPages(*file.table("secs_report"))) {
        jet::putU16(file.edit(page), jet::data_page::kSlots, jet::data_page::kOffsetMask);
    }
    return file.result();
}

/// The place of a long value's reference within the bytes of its row, where the row has one.
std::optional<std::size_t> referenceIn(const jet::TableDef& table, const jet::LocatedRow& row) {
    const jet::RowView view(table, row.bytes, row.target.page);
    for (std::size_t column = 0; column < table.info.columns.size(); ++column) {
        if (!jet::isLongValue(table.info.columns[column].type)) continue;
        const auto stored = view.stored(column);
        if (!stored || jet::readReference(*stored).kind == jet::long_value::kInline) continue;
        return static_cast<std::size_t>(stored->data() - row.bytes.data());
    }
    return std::nullopt;
}

/// Four descriptions that are said to stand beyond the end of the file.
Bytes withMemosNowhere(const Bytes& whole) {
    constexpr int kSpoilt = 4;
    constexpr std::uint32_t kBeyond = 0x00FFFF00;
    Spoiler file(whole);
    const auto variables = file.table("secs_cusvar");
    std::vector<std::pair<jet::RecordPointer, std::size_t>> references;
    for (jet::TableScan scan(file.pages(), *variables); scan.next();) {
        if (const auto at = referenceIn(*variables, scan.row())) {
            references.emplace_back(scan.row().target, *at);
        }
    }
    if (references.size() < kSpoilt) throw std::runtime_error("too few long descriptions");
    references.resize(kSpoilt);
    for (const auto& [row, at] : references) {
        const auto slot = jet::DataPage(row.page, file.pages().read(row.page)).slot(row.slot);
        jet::putU32(file.edit(row.page), slot.offset + at + jet::long_value::kPointer, kBeyond);
    }
    return file.result();
}

void write(const fs::path& file, const Bytes& bytes) {
    fs::create_directories(file.parent_path());
    std::ofstream out(file, std::ios::binary | std::ios::trunc);
    out.write(reinterpret_cast<const char*>(bytes.data()),
              static_cast<std::streamsize>(bytes.size()));
    if (!out) throw std::runtime_error(file.string() + ": cannot be written");
}

}  // namespace

void writeDamagedFiles(const fs::path& whole, const fs::path& folder) {
    constexpr std::size_t kWithinAPage = 100'001;
    constexpr std::size_t kPagesCutOff = 12;
    const Bytes good = bytesOf(readText(whole));
    const auto put = [&](const char* kind, const Bytes& bytes) {
        write(folder / kind / "gem.mdb", bytes);
    };
    put("access97", withHead(good, "Standard Jet DB", 0));
    put("access2007", withHead(good, "Standard ACE DB", 2));
    put("text_file", bytesOf("This is no database.\nIt has three lines,\nand this is the last.\n"));
    put("zero_length", {});
    put("wrong_signature", withHead(good, "Another Jet DB!", 1));
    put("truncated", shortened(good, kWithinAPage));
    put("truncated_at_page", shortened(good, good.size() - kPagesCutOff * jet::kPageSize));
    put("damaged_catalogue", withNoiseForACatalogue(good));
    put("damaged_ring", withARing(good));
    put("damaged_rows", withImpossibleRows(good));
    put("damaged_memo", withMemosNowhere(good));
}

}  // namespace stelvan::data::test
