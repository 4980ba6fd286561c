#include "jet/pages/header.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <string_view>

#include "jet/pages/fixed_pages.h"

namespace stelvan::jet {

namespace {

using MaskStream = std::array<std::uint8_t, header::kMaskedSize>;

/// The first bytes of the RC4 stream of the fixed key.
constexpr MaskStream makeMaskStream() {
    std::array<std::uint8_t, 256> state{};
    for (std::size_t i = 0; i < state.size(); ++i) state[i] = static_cast<std::uint8_t>(i);
    std::uint8_t j = 0;
    for (std::size_t i = 0; i < state.size(); ++i) {
        const auto keyByte = static_cast<std::uint8_t>(header::kMaskKey >> (8 * (i % 4)));
        j = static_cast<std::uint8_t>(j + state[i] + keyByte);
        std::swap(state[i], state[j]);
    }
    MaskStream stream{};
    std::uint8_t x = 0;
    std::uint8_t y = 0;
    for (std::uint8_t& byte : stream) {
        x = static_cast<std::uint8_t>(x + 1);
        y = static_cast<std::uint8_t>(y + state[x]);
        std::swap(state[x], state[y]);
        byte = state[static_cast<std::uint8_t>(state[x] + state[y])];
    }
    return stream;
}

constexpr MaskStream kMaskStream = makeMaskStream();
static_assert(kMaskStream[0] == 0xB5 && kMaskStream[15] == 0x9C && kMaskStream[127] == 0xD4);

constexpr std::array<std::uint8_t, 4> kSignature{0x00, 0x01, 0x00, 0x00};
constexpr std::string_view kJetName = "Standard Jet DB";
constexpr std::string_view kAceName = "Standard ACE DB";
constexpr std::string_view kMoneyName = "MSISAM Database";
constexpr std::uint32_t kJet3 = 0;
constexpr std::uint32_t kJet4 = 1;

[[noreturn]] void refuse(const PageFile& file, ErrorKind kind, const std::string& why) {
    throw Error(kind, "'" + file.path().string() + "' " + why).about(file.path().string());
}

void requireSignature(const PageFile& file, Bytes page) {
    const auto refuseFormat = [&] {
        refuse(file, ErrorKind::NotADatabase,
               "is not an Access database: its signature is missing.");
    };
    if (!std::equal(kSignature.begin(), kSignature.end(), page.begin())) refuseFormat();
    const Bytes name = bytesAt(page, header::kEngineName, header::kEngineNameSize);
    const auto named = [&](std::string_view text) {
        return std::equal(name.begin(), name.end(), text.begin(), text.end());
    };
    const std::uint32_t version = u32At(page, header::kVersion);
    if (named(kAceName))
        refuse(
            file, ErrorKind::UnsupportedVersion,
            "was made by Access 2007 or later (.accdb); save it in the Access 2002-2003 format.");
    if (named(kMoneyName))
        refuse(file, ErrorKind::UnsupportedVersion,
               "is a Microsoft Money file, not an Access database.");
    if (!named(kJetName)) refuseFormat();
    if (version == kJet3)
        refuse(file, ErrorKind::UnsupportedVersion,
               "was made by Access 97 or earlier; convert it to the Access 2002-2003 format.");
    if (version != kJet4)
        refuse(file, ErrorKind::UnsupportedVersion,
               "has the unknown format version " + std::to_string(version) + ".");
}

/// Whole days of a creation date, as the password field is masked with them.
std::uint32_t wholeDays(double days) {
    if (!(std::abs(days) < 2147483648.0)) return 0;
    return static_cast<std::uint32_t>(static_cast<std::int32_t>(days));
}

bool hasPassword(Bytes page) {
    const std::uint32_t mask = wholeDays(loadAt<double>(page, header::kCreated));
    for (std::size_t i = 0; i < header::kPasswordSize; i += sizeof mask)
        if (u32At(page, header::kPassword + i) != mask) return true;
    return false;
}

void requireReadable(const PageFile& file, Bytes page) {
    if (u32At(page, header::kEncryptionKey) != 0)
        refuse(file, ErrorKind::Encrypted, "is encoded (encrypted); decode it in Access first.");
    if (hasPassword(page))
        refuse(file, ErrorKind::PasswordProtected,
               "is protected by a database password; remove it in Access first.");
    if (u32At(page, header::kObjects) != kObjectsPage)
        throwCorrupt(
            0, "the header of '" + file.path().string() + "' does not lead to the catalogue.");
}

void requireWhole(const PageFile& file) {
    if (file.byteSize() % kPageSize == 0) return;
    throw Error(ErrorKind::Corrupt,
                "'" + file.path().string() + "' is cut off: it ends within page " +
                    std::to_string(file.pageCount()) + ".",
                file.pageCount());
}

}  // namespace

void maskHeader(WritablePageBytes page) {
    for (std::size_t i = 0; i < kMaskStream.size(); ++i)
        page[header::kMasked + i] ^= kMaskStream[i];
}

std::uint32_t passwordMask(double created) {
    return wholeDays(created);
}

FileHeader recognise(PageFile& file) {
    if (file.pageCount() == 0)
        refuse(file, ErrorKind::NotADatabase,
               file.byteSize() == 0 ? "is empty (no bytes), not a database."
                                    : "is too short to be an Access database.");
    std::array<std::uint8_t, kPageSize> plain{};
    std::ranges::copy(file.read(0), plain.begin());
    requireSignature(file, plain);
    maskHeader(plain);
    requireReadable(file, plain);
    requireWhole(file);

    FileHeader result;
    result.globalMap = pointerAt(plain, header::kGlobalMap);
    result.codePage = u16At(plain, header::kCodePage);
    result.engineBuild = u32At(plain, header::kEngineBuild);
    result.sortLocale = u16At(plain, header::kSortLocale);
    result.sortVersion = u8At(plain, header::kSortVersion);
    result.created = loadAt<double>(plain, header::kCreated);
    return result;
}

}  // namespace stelvan::jet
