// Recognition of files by their first page.
#include "jet/pages/header.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

#include "jet/pages/fixed_pages.h"
#include "tests/support/models.h"

namespace stelvan::jet {
namespace {

namespace fs = std::filesystem;

class Recognition : public ::testing::Test {
protected:
    using Page = std::vector<std::uint8_t>;

    /// Page 0 as a database has it, masked, after `change` was made to the unmasked bytes.
    static Page header(const std::function<void(WritablePageBytes)>& change = {}) {
        Page page(kPageSize);
        const WritablePageBytes bytes(page.data(), kPageSize);
        putU32(bytes, 0, 0x00000100);
        std::ranges::copy(std::string_view("Standard Jet DB"), page.begin() + header::kEngineName);
        putU32(bytes, header::kVersion, 1);
        putPointer(bytes, header::kGlobalMap, {kGlobalMapPage, kGlobalMapRow});
        putU32(bytes, header::kObjects, kObjectsPage);
        putU16(bytes, header::kCodePage, 1252);
        putU32(bytes, header::kEngineBuild, 9756);
        putU16(bytes, header::kSortLocale, 0x0409);
        constexpr double created = 42329.94;
        storeAt<double>(bytes, header::kCreated, created);
        for (std::size_t i = 0; i < header::kPasswordSize; i += 4)
            putU32(bytes, header::kPassword + i, passwordMask(created));
        if (change) change(bytes);
        maskHeader(bytes);
        return page;
    }

    fs::path file(Page bytes, std::size_t size = 2 * kPageSize) const {
        bytes.resize(size);
        const fs::path path = scratch_.path() / "gem.mdb";
        std::ofstream(path, std::ios::binary)
            .write(reinterpret_cast<const char*>(bytes.data()),
                   static_cast<std::streamsize>(bytes.size()));
        return path;
    }

    static FileHeader recogniseAt(const fs::path& path) {
        const auto pages = PageFile::open(path, Access::ReadOnly);
        const ReadScope scope(pages);
        return recognise(*pages);
    }

    static ErrorKind refusal(const fs::path& path) {
        try {
            recogniseAt(path);
        } catch (const Error& error) {
            EXPECT_NE(std::string(error.what()).find("gem.mdb"), std::string::npos) << error.what();
            return error.kind();
        }
        return ErrorKind::Misuse;
    }

    test::ScratchDir scratch_;
};

TEST_F(Recognition, AHeaderTellsWhatItSays) {
    const FileHeader header = recogniseAt(file(Recognition::header()));
    EXPECT_EQ(header.globalMap, (RecordPointer{1, 0}));
    EXPECT_EQ(header.codePage, 1252);
    EXPECT_EQ(header.engineBuild, 9756u);
    EXPECT_EQ(header.sortLocale, 0x0409);
    EXPECT_EQ(header.sortVersion, 0);
    EXPECT_EQ(header.created, 42329.94);
}

TEST_F(Recognition, MaskingTwiceGivesTheSameBytes) {
    Page page = header();
    const Page before = page;
    const WritablePageBytes bytes(page.data(), kPageSize);
    maskHeader(bytes);
    EXPECT_NE(page, before);
    EXPECT_TRUE(std::equal(page.begin(), page.begin() + 0x18, before.begin()));
    EXPECT_TRUE(std::equal(page.begin() + 0x98, page.end(), before.begin() + 0x98));
    maskHeader(bytes);
    EXPECT_EQ(page, before);
}

TEST_F(Recognition, NoBytesFewBytesAndOtherBytesAreNoDatabase) {
    EXPECT_EQ(refusal(file({}, 0)), ErrorKind::NotADatabase);
    EXPECT_EQ(refusal(file({'h', 'i'}, 100)), ErrorKind::NotADatabase);
    EXPECT_EQ(refusal(file(header(), kPageSize - 1)), ErrorKind::NotADatabase);
    EXPECT_EQ(refusal(file({'h', 'i'})), ErrorKind::NotADatabase);
    EXPECT_EQ(refusal(file(header([](auto page) { page[1] = 2; }))), ErrorKind::NotADatabase);
    EXPECT_EQ(refusal(file(header([](auto page) { page[header::kEngineName] = 's'; }))),
              ErrorKind::NotADatabase);
}

TEST_F(Recognition, OtherVersionsAreNamed) {
    const auto withName = [](std::string_view name, std::uint32_t version) {
        return header([=](WritablePageBytes page) {
            std::ranges::copy(name, page.begin() + header::kEngineName);
            putU32(page, header::kVersion, version);
        });
    };
    EXPECT_EQ(refusal(file(withName("Standard Jet DB", 0))), ErrorKind::UnsupportedVersion);
    EXPECT_EQ(refusal(file(withName("Standard Jet DB", 7))), ErrorKind::UnsupportedVersion);
    for (std::uint32_t version = 2; version <= 6; ++version)
        EXPECT_EQ(refusal(file(withName("Standard ACE DB", version))),
                  ErrorKind::UnsupportedVersion);
    EXPECT_EQ(refusal(file(withName("MSISAM Database", 1))), ErrorKind::UnsupportedVersion);
}

TEST_F(Recognition, AnAccess97FileOfOddSizeIsStillCalledThat) {
    const Page page = header([](WritablePageBytes bytes) { putU32(bytes, header::kVersion, 0); });
    EXPECT_EQ(refusal(file(page, 3 * kPageSize / 2)), ErrorKind::UnsupportedVersion);
}

TEST_F(Recognition, EncryptionAndPasswordAreRefused) {
    EXPECT_EQ(
        refusal(file(header([](auto page) { putU32(page, header::kEncryptionKey, 0x1234); }))),
        ErrorKind::Encrypted);
    EXPECT_EQ(refusal(file(header([](auto page) { page[header::kPassword] ^= 'x'; }))),
              ErrorKind::PasswordProtected);
    EXPECT_EQ(refusal(file(header([](auto page) { page[header::kPassword + 39] ^= 1; }))),
              ErrorKind::PasswordProtected);
}

TEST_F(Recognition, ACutFileNamesThePageItEndsIn) {
    try {
        recogniseAt(file(header(), 3 * kPageSize + 17));
        FAIL() << "accepted";
    } catch (const Error& error) {
        EXPECT_EQ(error.kind(), ErrorKind::Corrupt);
        EXPECT_EQ(error.page(), 3u);
    }
}

TEST_F(Recognition, AHeaderThatLeadsNowhereIsDamaged) {
    EXPECT_EQ(refusal(file(header([](auto page) { putU32(page, header::kObjects, 77); }))),
              ErrorKind::Corrupt);
}

TEST_F(Recognition, ADateThatIsNoNumberIsSurvived) {
    const Page page = header([](auto bytes) { storeAt<double>(bytes, header::kCreated, 1e300); });
    EXPECT_EQ(refusal(file(page)), ErrorKind::PasswordProtected);
}

TEST_F(Recognition, RealFilesAreAccepted) {
    if (test::samplesDir().empty()) GTEST_SKIP() << "samples are absent";
    int seen = 0;
    for (const fs::path& folder : {test::samplesDir(), test::samplesDir() / "access"}) {
        for (const auto& entry : fs::directory_iterator(folder)) {
            if (entry.path().extension() != ".mdb") continue;
            EXPECT_EQ(recogniseAt(entry.path()).globalMap, (RecordPointer{1, 0})) << entry.path();
            ++seen;
        }
    }
    EXPECT_GE(seen, 17);
}

TEST_F(Recognition, RealFilesOfOtherKindsAreRefused) {
    STELVAN_NEEDS_SAMPLE("refused/access97/gem.mdb");
    const auto kind = [](const std::string& name) {
        return refusal(test::sample("refused/" + name + "/gem.mdb"));
    };
    EXPECT_EQ(kind("access97"), ErrorKind::UnsupportedVersion);
    EXPECT_EQ(kind("access2007"), ErrorKind::UnsupportedVersion);
    EXPECT_EQ(kind("text_file"), ErrorKind::NotADatabase);
    EXPECT_EQ(kind("zero_length"), ErrorKind::NotADatabase);
    EXPECT_EQ(kind("wrong_signature"), ErrorKind::NotADatabase);
    EXPECT_EQ(kind("truncated"), ErrorKind::Corrupt);
}

}  // namespace
}  // namespace stelvan::jet
