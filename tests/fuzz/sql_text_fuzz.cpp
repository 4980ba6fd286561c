// A statement in SQL, run over a small model inside a unit of work that is
// given up afterwards.
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <string>

#include "data/builder/build_model.h"
#include "data/builder/generated_model.h"
#include "sql/engine.h"
#include "sql/error.h"
#include "tests/fuzz/support/input.h"

namespace {

using namespace stelvan;

const std::string& modelFile() {
    static const std::string kName = [] {
        std::string name = "/dev/shm/stelvan-fuzz-" + std::to_string(::getpid()) + ".mdb";
        const auto schema =
            data::parseSchema(data::readText(STELVAN_SOURCE_DIR "/data/schema.txt"));
        const auto tables =
            data::generateModel({.variables = 40, .events = 6, .alarms = 6, .reports = 5});
        data::buildModel(name, schema, tables);
        return name;
    }();
    static const int kRemoved = std::atexit([] { ::unlink(kName.c_str()); });
    (void)kRemoved;
    return kName;
}

template <typename Body>
void mayBeWrong(const Body& body) {
    try {
        fuzz::mayBeRefused(body);
    } catch (const sql::Error&) {
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static jet::Database database = jet::Database::open(modelFile());
    static sql::Engine engine(database);
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    mayBeWrong([&] { (void)engine.select(text); });
    mayBeWrong([&] {
        const jet::UnitOfWork givenUp(database);
        (void)engine.execute(text);
    });
    return 0;
}
