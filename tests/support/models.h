// The model files that the tests open: those that the build makes of tests/models, which are always
// there, and those of other makers, a bonus where the folder of samples is present.
//
// With STELVAN_TEST_MODELS=foreign in the environment model() gives the other makers' files where
// there are such, so that every test can be run over them.
#pragma once

#include <filesystem>
#include <iosfwd>
#include <string>
#include <vector>

#include "tests/support/scratch_dir.h"

namespace stelvan::test {

/// A file that the build makes, by its name below tests/models of the build: "gem.mdb",
/// "shapes/overflow.mdb", "refused/truncated/gem.mdb". Throws where there is no such file.
std::filesystem::path model(const std::string& name);

/// The folder of other makers' files, or an empty path where it is absent.
std::filesystem::path samplesDir();

/// The full path of one of them (relative to samplesDir()); empty where it is absent.
std::filesystem::path sample(const std::string& relative);

enum class Maker { Own, Foreign };

/// A file of one name and form, made by us or by another program.
struct ModelFile {
    std::string name;  // as model() takes it
    Maker maker = Maker::Own;

    /// Empty where it is absent.
    [[nodiscard]] std::filesystem::path path() const;
    /// What is known of its content: "jsonl", "schema.jsonl", "system.jsonl"; empty where nothing
    /// is.
    [[nodiscard]] std::filesystem::path expected(const std::string& kind) const;
};

/// For the names of tests with parameters: "own_gem", "foreign_shapes_overflow".
std::string label(const ModelFile& file);
void PrintTo(const ModelFile& file, std::ostream* out);

/// Each file as we make it, then as others do. Where no other maker's file is present, one that is
/// absent stands for all of them, so that the run shows what was left out.
std::vector<ModelFile> byEveryMaker(const std::vector<std::string>& names);
std::vector<ModelFile> byOtherMakers(const std::vector<std::string>& names);

}  // namespace stelvan::test

/// Leaves the running test as skipped where another maker's file is absent.
#define STELVAN_NEEDS_SAMPLE(relative)           \
    if (stelvan::test::sample(relative).empty()) \
    GTEST_SKIP() << "sample " << (relative) << " is absent"
#define STELVAN_NEEDS_FILE(file) \
    if ((file).path().empty()) GTEST_SKIP() << "the files of other makers are absent"
