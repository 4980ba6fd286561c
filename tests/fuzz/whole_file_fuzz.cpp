// A whole file: opened, its catalogue listed, every definition and every row of every table read,
// in stored order and in the order of each index.
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <string>

#include "jet/database.h"
#include "jet/rows/row_reader.h"
#include "tests/fuzz/support/input.h"

namespace {

using namespace stelvan;

void readRows(jet::Cursor& rows, std::size_t columns) {
    while (rows.next()) {
        for (std::size_t column = 0; column < columns; ++column) {
            fuzz::mayBeRefused([&] { (void)jet::toValue(rows.value(column)); });
        }
    }
}

void readTable(jet::Table& table) {
    const jet::TableInfo info = table.info();
    readRows(*table.scan(jet::allColumns(info)), info.columns.size());
    for (std::size_t index = 0; index < info.indexes.size(); ++index) {
        fuzz::mayBeRefused([&] { readRows(*table.inOrder(index, {}), 0); });
    }
}

const std::string& scratchFile() {
    static const std::string kName = "/dev/shm/stelvan-fuzz-" + std::to_string(::getpid()) + ".mdb";
    static const int kRemoved = std::atexit([] { ::unlink(kName.c_str()); });
    (void)kRemoved;
    return kName;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::ofstream(scratchFile(), std::ios::binary)
        .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
    fuzz::mayBeRefused([&] {
        jet::Database database = jet::Database::open(scratchFile(), jet::Access::ReadOnly);
        fuzz::mayBeRefused([&] { (void)database.relationships(); });
        for (const std::string& name : database.tableNames(true)) {
            fuzz::mayBeRefused([&] { readTable(database.table(name)); });
        }
    });
    return 0;
}
