// What one entry of an index costs, without rows and without a disk: keys of numbers as they are
// given out, and keys of names in any order.
#include <algorithm>
#include <random>
#include <string>

#include "jet/disk/memory_pages.h"
#include "jet/index/index_keys.h"
#include "jet/index/index_tree.h"
#include "tests/bench/contest.h"
#include "tests/bench/contestants.h"

namespace stelvan::bench {
namespace {

constexpr jet::PageNumber kRoot = 0;
constexpr jet::PageNumber kDefinition = 2;

class NewPages final : public jet::PageAllocator {
public:
    explicit NewPages(jet::PageFile& file) : file_(file) {}
    jet::PageNumber allocate() override { return file_.append(); }
    void release(jet::PageNumber) override {}

private:
    jet::PageFile& file_;
};

std::vector<jet::ValueView> risingNumbers() {
    std::vector<jet::ValueView> values;
    for (std::size_t i = 0; i < kEntries; ++i) values.emplace_back(static_cast<std::int32_t>(i));
    return values;
}

std::vector<jet::ValueView> shuffledNames() {
    static const std::vector<std::string> names = [] {
        std::vector<std::string> made;
        for (std::size_t i = 0; i < kEntries; ++i) {
            made.push_back("StatusVariable_Module" + std::to_string(i % 7) + "_" +
                           std::to_string(i));
        }
        std::shuffle(made.begin(), made.end(), std::mt19937(1));
        return made;
    }();
    return {names.begin(), names.end()};
}

void addEntries(benchmark::State& state, jet::ColumnType type,
                const std::vector<jet::ValueView>& values) {
    std::vector<jet::ColumnInfo> columns(1);
    columns[0].type = type;
    const std::vector<jet::IndexColumn> parts(1);
    const jet::KeyEncoder encoder(columns, parts);
    for (auto _ : state) {
        const auto file = std::make_shared<jet::MemoryPages>(1);
        jet::WriteScope scope(file);
        NewPages pages(*file);
        jet::IndexTree::makeRoot(file->edit(kRoot), kDefinition);
        jet::IndexTree tree(*file, kRoot, kDefinition, &pages);
        jet::IndexKey key;
        for (std::size_t i = 0; i < values.size(); ++i) {
            encoder.encode({&values[i], 1}, key);
            tree.insert(key.bytes, jet::RowId::unpack(static_cast<std::int64_t>(256 + i)));
        }
        scope.commit();
    }
}

void addNumbers(benchmark::State& state) {
    addEntries(state, jet::ColumnType::Long, risingNumbers());
}
void addNames(benchmark::State& state) {
    addEntries(state, jet::ColumnType::Text, shuffledNames());
}

BENCHMARK(addNumbers)->Name("add an index entry, numbers as given out/stelvan")->UseRealTime();
BENCHMARK(addNames)->Name("add an index entry, names in any order/stelvan")->UseRealTime();

}  // namespace
}  // namespace stelvan::bench
