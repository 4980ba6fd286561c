#include "gem/settings.h"

#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <set>

#include "base/run_time_error.h"
#include "tests/support/models.h"

namespace stelvan::gem {
namespace {

struct Case {
    const char* setting;
    const char* text;
    const char* marker;
};

class EverySetting : public ::testing::TestWithParam<Case> {};

TEST_P(EverySetting, judgesAtBelowAndAboveItsLimits) {
    const Case& c = GetParam();
    EXPECT_EQ(checkSetting(c.setting, c.text), c.marker) << c.setting << " \"" << c.text << '"';
}

const Case kPassword[] = {
    {"AdministratorPassword", "", "0"},
    {"AdministratorPassword", "abcdefghijkl", "0"},
    {"AdministratorPassword", "abcdefghijklm", "46"},
    {"AdministratorPassword", "ab cd", "2"},
    {"AdministratorPassword", "ab cdefghijklmno", "2"},
    {"AdministratorPassword", " abcdefghijk", "0"},
    {"AdministratorPassword", " abcdefghijkl", "46"},
    {"AdministratorPassword", "\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4",
     "0"},
};
INSTANTIATE_TEST_SUITE_P(Password, EverySetting, ::testing::ValuesIn(kPassword));

const Case kIntegers[] = {
    {"ConnectionRetryLimit", "0", "0"},
    {"ConnectionRetryLimit", "31", "0"},
    {"ConnectionRetryLimit", "32", "47"},
    {"ConnectionRetryLimit", "-1", "47"},
    {"DeviceID", "0", "0"},
    {"DeviceID", "32767", "0"},
    {"DeviceID", "32768", "48"},
    {"DeviceID", "-1", "48"},
    {"LocalIPPort", "5000", "49"},
    {"LocalIPPort", "5001", "0"},
    {"LocalIPPort", "32767", "0"},
    {"LocalIPPort", "32768", "49"},
    {"RemoteIPPort", "5000", "49"},
    {"RemoteIPPort", "5001", "0"},
    {"RemoteIPPort", "32767", "0"},
    {"RemoteIPPort", "32768", "49"},
    {"T3Timeout", "0", "55"},
    {"T3Timeout", "1", "0"},
    {"T3Timeout", "120", "0"},
    {"T3Timeout", "121", "55"},
    {"T4Timeout", "0", "55"},
    {"T4Timeout", "1", "0"},
    {"T4Timeout", "120", "0"},
    {"T4Timeout", "121", "55"},
    {"T8Timeout", "0", "55"},
    {"T8Timeout", "1", "0"},
    {"T8Timeout", "120", "0"},
    {"T8Timeout", "121", "55"},
    {"T5Timeout", "0", "57"},
    {"T5Timeout", "1", "0"},
    {"T5Timeout", "240", "0"},
    {"T5Timeout", "241", "57"},
    {"T6Timeout", "0", "57"},
    {"T6Timeout", "1", "0"},
    {"T6Timeout", "240", "0"},
    {"T6Timeout", "241", "57"},
    {"T7Timeout", "0", "57"},
    {"T7Timeout", "1", "0"},
    {"T7Timeout", "240", "0"},
    {"T7Timeout", "241", "57"},
    {"TimeOutRetry", "0", "61"},
    {"TimeOutRetry", "1", "0"},
    {"TimeOutRetry", "86400", "0"},
    {"TimeOutRetry", "86401", "61"},
};
INSTANTIATE_TEST_SUITE_P(Integers, EverySetting, ::testing::ValuesIn(kIntegers));

const Case kReals[] = {
    {"T1Timeout", "0.09", "53"}, {"T1Timeout", "0.1", "0"},   {"T1Timeout", "10", "0"},
    {"T1Timeout", "10.5", "53"}, {"T1Timeout", "1 0", "2"},   {"T1Timeout", "x", "3"},
    {"T1Timeout", "", "3"},      {"T1Timeout", " 0.5 ", "0"}, {"T1Timeout", "10.0", "0"},
    {"T2Timeout", "0.19", "54"}, {"T2Timeout", "0.2", "0"},   {"T2Timeout", "25", "0"},
    {"T2Timeout", "25.1", "54"}, {"T2Timeout", "2 5", "2"},   {"T2Timeout", "x", "3"},
};
INSTANTIATE_TEST_SUITE_P(Reals, EverySetting, ::testing::ValuesIn(kReals));

const Case kAddressesAndPorts[] = {
    {"LocalIPAddress", "192.168.0.1", "0"},
    {"LocalIPAddress", " 192.168.0.1 ", "0"},
    {"LocalIPAddress", "0.0.0.0", "0"},
    {"LocalIPAddress", "255.255.255.255", "0"},
    {"LocalIPAddress", "192.168.0", "50"},
    {"LocalIPAddress", "192.168.0.256", "50"},
    {"LocalIPAddress", "192.168.0.1.", "50"},
    {"LocalIPAddress", "192.168.0.1.2", "50"},
    {"LocalIPAddress", "192.168..1", "50"},
    {"LocalIPAddress", "", "50"},
    {"LocalIPAddress", "1e1.0.0.1", "50"},
    {"LocalIPAddress", "+1.0.0.1", "50"},
    {"LocalIPAddress", "-1.0.0.1", "50"},
    {"LocalIPAddress", "99999999999.0.0.1", "50"},
    {"LocalIPAddress", "192.168. 0.1", "2"},
    {"RemoteIPAddress", "10.0.0.1", "0"},
    {"RemoteIPAddress", "10.0.0", "50"},
    {"RemoteIPAddress", "10.0.0.1 x", "2"},
    {"SerialPort", "COM1", "0"},
    {"SerialPort", "com12", "0"},
    {"SerialPort", "COM0", "0"},
    {"SerialPort", " COM1 ", "0"},
    {"SerialPort", "COM", "62"},
    {"SerialPort", "COM123", "62"},
    {"SerialPort", "TTY1", "62"},
    {"SerialPort", "COM-1", "62"},
    {"SerialPort", "COM.5", "62"},
    {"SerialPort", "/dev/ttyS0", "62"},
    {"SerialPort", "", "62"},
    {"SerialPort", "COM 1", "2"},
};
INSTANTIATE_TEST_SUITE_P(AddressesAndPorts, EverySetting, ::testing::ValuesIn(kAddressesAndPorts));

TEST(SettingRules, integerSettingsTestBlankNumericPointAndOverflow) {
    for (const char* name :
         {"ConnectionRetryLimit", "DeviceID", "LocalIPPort", "RemoteIPPort", "T3Timeout",
          "T4Timeout", "T5Timeout", "T6Timeout", "T7Timeout", "T8Timeout", "TimeOutRetry"}) {
        EXPECT_EQ(checkSetting(name, "1 0"), "2") << name;
        EXPECT_EQ(checkSetting(name, "x"), "3") << name;
        EXPECT_EQ(checkSetting(name, ""), "3") << name;
        EXPECT_EQ(checkSetting(name, "2.5"), "4") << name;
        EXPECT_THROW(static_cast<void>(checkSetting(name, "2147483648")), base::RunTimeError)
            << name;
    }
    EXPECT_THROW(static_cast<void>(checkSetting("T1Timeout", "1e39")), base::RunTimeError);
    EXPECT_THROW(static_cast<void>(checkSetting("T2Timeout", "1e39")), base::RunTimeError);
}

TEST(SettingRules, comboAndNameOnlySettingsAreNeverRefused) {
    for (const char* name :
         {"AlarmEnableAll", "BaudRate", "Connected", "ConnectionHost", "ConnectionPortType",
          "EventEnableAll", "HSMSConnectionType", "PortOpenAtStartUp", "PortOpened", "Unknown"}) {
        for (const char* text : {"", "115200", "a b", "x"})
            EXPECT_EQ(checkSetting(name, text), "0") << name;
    }
}

class PathRules : public ::testing::Test {
protected:
    test::ScratchDir scratch;
    std::string made(const std::string& name) const {
        const auto path = scratch.path() / name;
        std::ofstream(path) << "x";
        return path.string();
    }
    std::string missing(const std::string& name) const { return (scratch.path() / name).string(); }
};

TEST_F(PathRules, dictionaryMustExistAndBeXml) {
    EXPECT_EQ(checkSetting("SECSDictionaryFile", made("dict.xml")), "0");
    EXPECT_EQ(checkSetting("SECSDictionaryFile", made("dict.txt")), "63");
    EXPECT_EQ(checkSetting("SECSDictionaryFile", made("dict.XML")), "63");
    EXPECT_EQ(checkSetting("SECSDictionaryFile", made("dict.xml.bak")), "0");
    EXPECT_EQ(checkSetting("SECSDictionaryFile", missing("none.xml")), "51");
    EXPECT_EQ(checkSetting("SECSDictionaryFile", missing("none.txt")), "51");
    EXPECT_EQ(checkSetting("SECSDictionaryFile", ""), "51");
    EXPECT_EQ(checkSetting("SECSDictionaryFile", scratch.path().string()), "51");
}

TEST_F(PathRules, logFileMustExist) {
    EXPECT_EQ(checkSetting("SECSLogFile", made("secs.log")), "0");
    EXPECT_EQ(checkSetting("SECSLogFile", missing("none.log")), "51");
    EXPECT_EQ(checkSetting("SECSLogFile", made("padded.log") + " "), "51");
}

TEST_F(PathRules, logPathMustBeAFolder) {
    EXPECT_EQ(checkSetting("SECSILogPath", scratch.path().string()), "0");
    EXPECT_EQ(checkSetting("SECSILogPath", made("file")), "52");
    EXPECT_EQ(checkSetting("SECSILogPath", missing("none")), "52");
    EXPECT_EQ(checkSetting("SECSILogPath", "C:\\logs"), "52");
}

TEST_F(PathRules, missingDatabaseIsToldInWords) {
    EXPECT_EQ(checkSetting("GEMDatabase", made("gem.mdb")), "0");
    EXPECT_EQ(checkSetting("GEMDatabase", missing("none.mdb")), "Database file does not exist.");
    EXPECT_EQ(checkSetting("GEMDatabase", "C:\\gem\\gem.mdb"), "Database file does not exist.");
}

TEST_F(PathRules, linksAreFollowed) {
    const std::string file = made("real.xml");
    std::filesystem::create_symlink(file, scratch.path() / "link.xml");
    EXPECT_TRUE(lCheckFileDir((scratch.path() / "link.xml").string(), PathKind::File));
    std::filesystem::remove(file);
    EXPECT_FALSE(lCheckFileDir((scratch.path() / "link.xml").string(), PathKind::File));
}

TEST(SettingRules, everySettingHasTheInputOfItsName) {
    const std::map<InputKind, std::set<std::string_view>> expected = {
        {InputKind::Combo,
         {"BaudRate", "ConnectionPortType", "HSMSConnectionType", "AlarmEnableAll",
          "EventEnableAll", "ConnectionHost", "PortOpenAtStartUp"}},
        {InputKind::NameOnly, {"PortOpened", "Connected", "GEMDatabase"}},
        {InputKind::File, {"SECSDictionaryFile", "SECSLogFile"}},
        {InputKind::Folder, {"SECSILogPath"}},
        {InputKind::Text,
         {"ConnectionRetryLimit", "AdministratorPassword", "DeviceID", "LocalIPPort",
          "RemoteIPPort", "SerialPort", "T1Timeout", "T2Timeout", "T3Timeout", "T4Timeout",
          "T5Timeout", "T6Timeout", "T7Timeout", "T8Timeout", "TimeOutRetry", "LocalIPAddress",
          "RemoteIPAddress"}},
    };
    std::map<InputKind, std::set<std::string_view>> found;
    for (const SettingRule& rule : settingRules()) found[rule.input].insert(rule.name);
    EXPECT_EQ(found, expected);
}

TEST(SettingRules, comboSettingsOfferTheirLists) {
    const std::vector<std::string_view> none;
    const std::vector<std::string_view> trueFalse = {"TRUE", "FALSE"};
    const std::map<std::string_view, std::vector<std::string_view>> expected = {
        {"BaudRate", {"19200", "9600", "4800", "2400", "1200", "300", "150"}},
        {"ConnectionPortType", {"SECSI-RS232", "HSMS", "HSMS_SS"}},
        {"HSMSConnectionType", {"ACTIVE", "PASSIVE"}},
        {"AlarmEnableAll", trueFalse},
        {"EventEnableAll", trueFalse},
        {"ConnectionHost", trueFalse},
        {"PortOpenAtStartUp", trueFalse},
    };
    for (const SettingRule& rule : settingRules()) {
        const auto row = expected.find(rule.name);
        const std::vector<std::string_view> offered(rule.choices.begin(), rule.choices.end());
        EXPECT_EQ(offered, row == expected.end() ? none : row->second) << rule.name;
    }
}

TEST(SettingRules, everySettingSaysWhatItTakesAndMeans) {
    const std::map<std::string_view, std::string_view> ranges = {
        {"AdministratorPassword", "up to 12 characters, no blank"},
        {"ConnectionRetryLimit", "0 to 31 times"},
        {"DeviceID", "0 to 32767"},
        {"LocalIPAddress", "four numbers of 0 to 255"},
        {"RemoteIPPort", "5001 to 32767"},
        {"SECSDictionaryFile", "an existing .xml file"},
        {"SECSILogPath", "an existing folder"},
        {"SECSLogFile", "an existing file"},
        {"SerialPort", "COM1 to COM99"},
        {"T1Timeout", "0.1 to 10 s"},
        {"T2Timeout", "0.2 to 25 s"},
        {"T4Timeout", "1 to 120 s"},
        {"T6Timeout", "1 to 240 s"},
        {"TimeOutRetry", "1 to 86400 s"},
        {"ConnectionHost", ""}};
    for (const auto& [name, range] : ranges) EXPECT_EQ(rangeOf(*ruleFor(name)), range) << name;
    for (const SettingRule& rule : settingRules()) {
        EXPECT_FALSE(rule.meaning.empty()) << rule.name;
        EXPECT_EQ(rule.meaning.back(), '.') << rule.name;
    }
}

TEST(SettingRules, namesAreComparedExactly) {
    EXPECT_EQ(ruleFor("baudrate"), nullptr);
    EXPECT_EQ(ruleFor("T9Timeout"), nullptr);
    ASSERT_NE(ruleFor("BaudRate"), nullptr);
}

TEST(SettingRules, numbersAddressesAndPortsAreStoredTrimmed) {
    EXPECT_EQ(storedSetting("DeviceID", " 5 "), "5");
    EXPECT_EQ(storedSetting("T1Timeout", " 0.5 "), "0.5");
    EXPECT_EQ(storedSetting("LocalIPAddress", " 10.0.0.1"), "10.0.0.1");
    EXPECT_EQ(storedSetting("SerialPort", "COM1 "), "COM1");
    EXPECT_EQ(storedSetting("AdministratorPassword", " pw "), " pw ");
    EXPECT_EQ(storedSetting("SECSLogFile", " a.log "), " a.log ");
    EXPECT_EQ(storedSetting("BaudRate", " 9600 "), " 9600 ");
    EXPECT_EQ(storedSetting("Unknown", " x "), " x ");
}

}  // namespace
}  // namespace stelvan::gem
