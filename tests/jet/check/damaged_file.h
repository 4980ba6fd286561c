// One model in memory, a place in it to damage, and the words that must be said about it.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <string>

#include "jet/check/check.h"
#include "jet/disk/commit_slots.h"
#include "jet/index/index_page.h"
#include "jet/index/index_page_editor.h"
#include "jet/pages/data_page.h"
#include "jet/pages/fixed_pages.h"
#include "jet/pages/header.h"
#include "jet/pages/long_value.h"
#include "jet/pages/usage_map.h"
#include "jet/rows/row_codec.h"
#include "jet/rows/row_layout.h"
#include "jet/tables/catalog.h"
#include "jet/tables/definition_format.h"
#include "jet/tables/table_scan.h"
#include "tests/jet/file_bytes.h"
#include "tests/jet/memory_pages.h"
#include "tests/support/models.h"

namespace stelvan::jet {

using test::MemoryPages;

inline std::string describe(const std::vector<Finding>& findings) {
    std::string text;
    for (const Finding& finding : findings) {
        text += (finding.isNote ? "note " : "fault ") + std::to_string(finding.page) + ": " +
                finding.text + "\n";
    }
    return text;
}

class CheckDamage : public testing::Test {
protected:
    void load(const std::string& name) {
        file_ = std::make_shared<MemoryPages>(test::bytesOf(test::model(name)));
        scope_.emplace(file_);
        catalog_.emplace(*file_);
    }

    const TableDef& table(const std::string& name) {
        definition_ = catalog_->definition(*catalog_->findTable(name));
        return *definition_;
    }
    // Of a file that has but one.
    const TableDef& onlyTable() {
        for (const CatalogEntry& entry : catalog_->entries()) {
            if (entry.isTable() && !entry.isSystem()) definition_ = catalog_->definition(entry);
        }
        return *definition_;
    }
    PageNumber firstPage(const TableDef& definition) {
        return UsageMap(*file_, definition.ownedMap).next(0).value();
    }
    // A page of rows whose slot has the flags, and the slot.
    RecordPointer slotWith(const TableDef& definition, std::uint16_t flags) {
        const UsageMap owned(*file_, definition.ownedMap);
        for (auto page = owned.next(0); page; page = owned.next(*page + 1)) {
            const DataPage data(*page, file_->read(*page));
            for (std::size_t i = 0; i < data.slotCount(); ++i) {
                if (data.slot(i).flags == flags) return {*page, static_cast<std::uint8_t>(i)};
            }
        }
        ADD_FAILURE() << "the model has no such row";
        return {};
    }
    WritableBytes rowAt(RecordPointer where) {
        const Slot slot = DataPage(where.page, file_->read(where.page)).slot(where.slot);
        return file_->edit(where.page).subspan(slot.offset, slot.length);
    }
    void setSlotFlags(RecordPointer where, std::uint16_t flags) {
        const std::size_t at = data_page::kSlots + data_page::kSlotSize * where.slot;
        const WritablePageBytes page = file_->edit(where.page);
        putU16(page, at,
               static_cast<std::uint16_t>((u16At(page, at) & data_page::kOffsetMask) | flags));
    }
    void flipInMap(RecordPointer map, PageNumber page) {
        const WritableBytes row = rowAt(map);
        ASSERT_EQ(row[0], usage_map::kInline);
        page -= u32At(row, usage_map::kStart);
        row[usage_map::kBits + page / 8] ^= static_cast<std::uint8_t>(1U << (page % 8));
    }
    // The first row of a table whose long value is of this kind: the bytes of its reference.
    WritableBytes longValueReference(const TableDef& definition, std::uint32_t kind) {
        for (TableScan scan(*file_, definition); scan.next();) {
            const RowView row(definition, scan.row().bytes, scan.row().target.page);
            for (std::size_t i = 0; i < definition.info.columns.size(); ++i) {
                if (!isLongValue(definition.info.columns[i].type)) continue;
                const auto stored = row.stored(i);
                if (!stored || readReference(*stored).kind != kind) continue;
                const WritableBytes bytes = rowAt(scan.row().target);
                return bytes.subspan(
                    static_cast<std::size_t>(stored->data() - scan.row().bytes.data()),
                    stored->size());
            }
        }
        ADD_FAILURE() << "the model has no such long value";
        return {};
    }

    void expectFault(const std::string& words) {
        const std::vector<Finding> findings = check(file_);
        const bool said = std::ranges::any_of(findings, [&](const Finding& finding) {
            return !finding.isNote && finding.text.find(words) != std::string::npos;
        });
        EXPECT_TRUE(said) << "not said: " << words << "\n" << describe(findings);
    }

    std::shared_ptr<MemoryPages> file_;
    std::optional<WriteScope> scope_;
    std::optional<Catalog> catalog_;
    std::shared_ptr<const TableDef> definition_;
};

}  // namespace stelvan::jet
