#include "settings/setting_inputs.h"

#include <QComboBox>
#include <QPushButton>
#include <QTreeWidget>
#include <fstream>

#include "gem/stored.h"
#include "tests/support/check_bench.h"

namespace stelvan::settings {
namespace {

using form::EditMode;

class SettingInputsTest : public test::CheckBench {
protected:
    SettingInputs inputs{allChecks};
    form::Field& value = form[txtSttValue];
    form::Field& defValue = form[txtSttDefValue];

    void SetUp() override {
        CheckBench::SetUp();
        inputs.connectFields();
        state.category = gem::GEMSTT;
        form.showFrame(5);
        QApplication::processEvents();
    }

    void show(const QString& name, const QString& text, const QString& byDefault,
              EditMode mode = EditMode::Editing) {
        form[txtSttName].setText(name);
        value.setText(text);
        defValue.setText(byDefault);
        value.setMarker("0");
        defValue.setMarker("0");
        state.editMode = mode;
        inputs.lInitSttInput(mode == EditMode::Editing);
    }

    /// Texts, combo boxes, check boxes, buttons; of the value, then of the default value.
    QString visible() const {
        QString all;
        for (const bool on :
             {form[txtSttValue].isVisible(), form[cmbSttValue].isVisible(),
              form[chkSttValue].isVisible(), !form.cmdSttBrowse->isHidden(),
              form[txtSttDefValue].isVisible(), form[cmbSttDefValue].isVisible(),
              form[chkSttDefValue].isVisible(), !form.cmdSttDefBrowse->isHidden()}) {
            all += on ? '1' : '0';
        }
        return all;
    }
    /// What a save would write for one of the two values.
    QString stored(gem::Control field) const {
        const gem::Record record = allChecks.recordFields.read();
        for (const gem::ColumnValue& column : gem::columnsOf(record))
            if (column.column == gem::factsOf(field).column)
                return form::toQt(std::get<std::string>(column.value));
        return {};
    }
    std::string made(const std::string& name) const {
        const auto path = scratch.path() / name;
        std::ofstream(path) << "x";
        return path.string();
    }
    QString madePath(const std::string& name) const { return QString::fromStdString(made(name)); }
};

TEST_F(SettingInputsTest, everySettingShowsExactlyItsInputs) {
    const std::pair<const char*, QStringList> kinds[] = {
        {"01000100",
         {"BaudRate", "ConnectionPortType", "HSMSConnectionType", "AlarmEnableAll",
          "EventEnableAll", "ConnectionHost", "PortOpenAtStartUp"}},
        {"00000000", {"PortOpened", "Connected", "GEMDatabase", "TraceLevel", ""}},
        {"10011001", {"SECSDictionaryFile", "SECSILogPath", "SECSLogFile"}},
        {"10001000",
         {"ConnectionRetryLimit", "AdministratorPassword", "DeviceID", "LocalIPPort",
          "RemoteIPPort", "SerialPort", "T1Timeout", "T2Timeout", "T3Timeout", "T4Timeout",
          "T5Timeout", "T6Timeout", "T7Timeout", "T8Timeout", "TimeOutRetry", "LocalIPAddress",
          "RemoteIPAddress"}},
    };
    for (const auto& [expected, names] : kinds) {
        for (const QString& name : names) {
            show(name, "x", "y");
            EXPECT_EQ(visible(), expected) << name.toStdString();
            show(name, "x", "y", EditMode::Browsing);
            EXPECT_EQ(visible(), expected) << name.toStdString();
        }
    }
}

TEST_F(SettingInputsTest, comboSettingsOfferTheirListsInOrder) {
    const std::pair<QString, QStringList> lists[] = {
        {"BaudRate", {"19200", "9600", "4800", "2400", "1200", "300", "150"}},
        {"ConnectionPortType", {"SECSI-RS232", "HSMS", "HSMS_SS"}},
        {"HSMSConnectionType", {"ACTIVE", "PASSIVE"}},
        {"AlarmEnableAll", {"TRUE", "FALSE"}},
        {"EventEnableAll", {"TRUE", "FALSE"}},
        {"ConnectionHost", {"TRUE", "FALSE"}},
        {"PortOpenAtStartUp", {"TRUE", "FALSE"}},
    };
    for (const auto& [name, entries] : lists) {
        show(name, entries.last(), entries.first());
        EXPECT_EQ(form[cmbSttValue].entries(), entries);
        EXPECT_EQ(form[cmbSttDefValue].entries(), entries);
        EXPECT_EQ(form[cmbSttValue].text(), entries.last());
        EXPECT_EQ(form[cmbSttDefValue].text(), entries.first());
    }
}

TEST_F(SettingInputsTest, editingColoursAndFocusesTheFirstInput) {
    show("BaudRate", "9600", "300");
    EXPECT_EQ(form[cmbSttValue].colour(), form::Colour::ToolTipBackground);
    EXPECT_EQ(form[cmbSttDefValue].colour(), form::Colour::ToolTipBackground);
    EXPECT_TRUE(form[cmbSttValue].widget()->hasFocus());
    show("DeviceID", "1", "1");
    EXPECT_TRUE(value.widget()->hasFocus());
    show("SECSLogFile", "1", "1");
    EXPECT_TRUE(value.widget()->hasFocus());
}

TEST_F(SettingInputsTest, browsingClosesEverythingAndTakesNoFocus) {
    form.tvwSECSItem->setFocus();
    for (const char* name : {"BaudRate", "DeviceID", "SECSLogFile"}) {
        show(name, "1", "1", EditMode::Browsing);
        EXPECT_TRUE(value.isLocked());
        EXPECT_TRUE(defValue.isLocked());
        EXPECT_FALSE(form[cmbSttValue].isEnabled());
        EXPECT_FALSE(form[cmbSttDefValue].isEnabled());
        EXPECT_FALSE(form.cmdSttBrowse->isEnabled());
        EXPECT_FALSE(form.cmdSttDefBrowse->isEnabled());
        EXPECT_EQ(form[cmbSttValue].colour(), form::Colour::WindowBackground);
        EXPECT_TRUE(form.tvwSECSItem->hasFocus());
    }
    state.editMode = EditMode::Editing;
    inputs.lSttSetRightByRecord();
    EXPECT_TRUE(value.isOpen());
    EXPECT_TRUE(form[cmbSttDefValue].isOpen());
    EXPECT_TRUE(form.cmdSttDefBrowse->isEnabled());
}

TEST_F(SettingInputsTest, aChoiceGoesIntoItsTextFieldAtOnce) {
    show("BaudRate", "9600", "300");
    auto* const combo = qobject_cast<QComboBox*>(form[cmbSttValue].widget());
    QTest::keyClick(combo, Qt::Key_Down);
    EXPECT_EQ(value.text(), "4800");
    EXPECT_EQ(defValue.text(), "300");
    QTest::keyClick(form[cmbSttDefValue].widget(), Qt::Key_Up);
    EXPECT_EQ(defValue.text(), "1200");
    inputs.lInitSttInput(false);  // as the save does
    EXPECT_EQ(form[cmbSttValue].text(), "4800");
    EXPECT_EQ(value.text(), "4800");
}

TEST_F(SettingInputsTest, aStoredValueOutsideTheListStaysUntilAnotherIsChosen) {
    show("BaudRate", "115200", "9600");
    EXPECT_EQ(form[cmbSttValue].text(), "");
    EXPECT_EQ(form[cmbSttValue].hint(), "115200");
    EXPECT_EQ(value.text(), "115200");
    EXPECT_TRUE(inputs.checkForSave());
    EXPECT_EQ(stored(txtSttValue), "115200");
}

TEST_F(SettingInputsTest, faultsOfBothValuesAreListedUnderTheSettingsName) {
    show("DeviceID", "-1", "x");
    EXPECT_FALSE(inputs.checkForSave());
    EXPECT_EQ(value.marker(), "48");
    EXPECT_EQ(defValue.marker(), "3");
    EXPECT_EQ(box.text(),
              "[DeviceIDValue::]: Valid range is 0 to 32767. \r\n"
              "[DeviceIDDefault Value::]: Must be numeric.\r\n");
}

TEST_F(SettingInputsTest, verifyingOneFieldListsBoth) {
    show("T1Timeout", "0.09", "10.5");
    EXPECT_FALSE(inputs.lVerifySetting(value));
    EXPECT_EQ(box.text(), "[T1TimeoutValue::]: Valid range is 0.1 to 10. \r\n");
    EXPECT_FALSE(inputs.lVerifySetting(defValue));
    EXPECT_EQ(box.text(),
              "[T1TimeoutValue::]: Valid range is 0.1 to 10. \r\n"
              "[T1TimeoutDefault Value::]: Valid range is 0.1 to 10. \r\n");
    value.setText("0.1");
    EXPECT_FALSE(inputs.lVerifySetting(value));
    defValue.setText("10");
    EXPECT_TRUE(inputs.lVerifySetting(defValue));
    EXPECT_EQ(box.text(), "");
}

TEST_F(SettingInputsTest, aDefaultCorrectedAfterARefusalIsNoLongerListed) {
    show("DeviceID", "1", "x");
    EXPECT_FALSE(inputs.checkForSave());
    defValue.setText("5");
    EXPECT_TRUE(inputs.checkForSave());
    EXPECT_EQ(box.text(), "");
}

TEST_F(SettingInputsTest, leavingAFieldChecksItWhileEditing) {
    struct Row {
        const char* setting;
        const char* text;
        const char* message;
    };
    const Row rows[] = {
        {"AdministratorPassword", "ab cd", "Cannot contain space in between."},
        {"AdministratorPassword", "abcdefghijklm", "Maximum 12 characters. "},
        {"ConnectionRetryLimit", "32", "Valid range is 0 to 31. "},
        {"DeviceID", "-1", "Valid range is 0 to 32767. "},
        {"LocalIPPort", "5000", "Valid range is 5001 to 32767. "},
        {"RemoteIPPort", "32768", "Valid range is 5001 to 32767. "},
        {"LocalIPAddress", "192.168.0", "Invalid IP address. "},
        {"RemoteIPAddress", "192.168.0.256", "Invalid IP address. "},
        {"SerialPort", "TTY1", "Correct format should be: COMnn, where n=1-9. "},
        {"SECSDictionaryFile", "none.xml", "File does not exist. "},
        {"SECSLogFile", "none.log", "File does not exist. "},
        {"SECSILogPath", "none", "Path does not exist. "},
        {"T1Timeout", "1 0", "Cannot contain space in between."},
        {"T1Timeout", "0.09", "Valid range is 0.1 to 10. "},
        {"T2Timeout", "26", "Valid range is 0.2 to 25. "},
        {"T3Timeout", "121", "Valid range is 1 to 120. "},
        {"T3Timeout", "2.5", "Must be an integer."},
        {"T4Timeout", "0", "Valid range is 1 to 120. "},
        {"T5Timeout", "241", "Valid range is 1 to 240. "},
        {"T6Timeout", "0", "Valid range is 1 to 240. "},
        {"T7Timeout", "x", "Must be numeric."},
        {"T8Timeout", "0", "Valid range is 1 to 120. "},
        {"TimeOutRetry", "86401", "Valid range is 1 to 86400. "},
    };
    for (const Row& row : rows) {
        show(row.setting, "", "");
        typeAndLeave(value, row.text);
        EXPECT_EQ(box.text(), line(QString(row.setting) + "Value::", row.message));
        show(row.setting, "", "");
        typeAndLeave(defValue, row.text);
        EXPECT_EQ(box.text(), line(QString(row.setting) + "Default Value::", row.message));
    }
    EXPECT_EQ(failures, QStringList());
}

TEST_F(SettingInputsTest, aDictionaryMustBeXml) {
    show("SECSDictionaryFile", "", "");
    typeAndLeave(value, madePath("dict.txt"));
    EXPECT_EQ(box.text(),
              "[SECSDictionaryFileValue::]: Invalid dictionary file. Dictionary file must be an "
              ".xml file.\r\n");
    typeAndLeave(value, madePath("dict.xml"));
    EXPECT_EQ(box.text(), "");
}

TEST_F(SettingInputsTest, nothingIsCheckedWhileBrowsing) {
    show("DeviceID", "x", "y", EditMode::Browsing);
    inputs.txtSttValue_LostFocus();
    EXPECT_EQ(value.marker(), "0");
    EXPECT_EQ(box.text(), "");
}

TEST_F(SettingInputsTest, anOverflowIsReportedAndRefusesTheSave) {
    show("DeviceID", "99999999999", "1");
    EXPECT_FALSE(inputs.checkForSave());
    EXPECT_EQ(failures, QStringList("ERROR(6) [frmMain.lVerifySetting.0]: Overflow"));
    EXPECT_EQ(value.marker(), "0");
    show("DeviceID", "1", "99999999999");
    defValue.setMarker("3");
    EXPECT_FALSE(inputs.checkForSave());
    EXPECT_EQ(defValue.marker(), "0");
    EXPECT_EQ(box.text(), "");
}

TEST_F(SettingInputsTest, aCancelClosesTheInputsBeforeTheModeChanges) {
    show("BaudRate", "9600", "300");
    state.checksEnabled = false;
    inputs.lInitSttInput(false);
    EXPECT_FALSE(form[cmbSttValue].isOpen());
    EXPECT_TRUE(value.isLocked());
}

TEST_F(SettingInputsTest, aMissingDatabaseIsListedInItsOwnWords) {
    show("GEMDatabase", "C:\\Equipment\\gem.mdb", madePath("gem.mdb"));
    EXPECT_FALSE(inputs.checkForSave());
    EXPECT_EQ(value.marker(), "Database file does not exist.");
    EXPECT_EQ(box.text(), "[GEMDatabaseValue::]: Database file does not exist.\r\n");
    EXPECT_EQ(failures, QStringList());
    value.setText(madePath("gem.mdb"));
    EXPECT_TRUE(inputs.checkForSave());
}

TEST_F(SettingInputsTest, comboSettingsAreNeverRefused) {
    for (const char* name :
         {"BaudRate", "ConnectionPortType", "HSMSConnectionType", "AlarmEnableAll",
          "EventEnableAll", "ConnectionHost", "PortOpenAtStartUp", "PortOpened", "Connected"}) {
        show(name, "any thing", "");
        EXPECT_TRUE(inputs.checkForSave()) << name;
    }
}

TEST_F(SettingInputsTest, browsingForAFilePutsItIntoTheField) {
    show("SECSLogFile", "/old/path.log", "default.log");
    const QString chosen = madePath("secs.log");
    dialogs.choices = {chosen, "/x/y.log"};
    QTest::mouseClick(form.cmdSttBrowse, Qt::LeftButton);
    EXPECT_EQ(value.text(), chosen);
    EXPECT_EQ(defValue.text(), "default.log");
    ASSERT_EQ(dialogs.files.size(), 1u);
    EXPECT_EQ(dialogs.files[0].title, "Select file...");
    EXPECT_EQ(dialogs.files[0].start, "/old/path.log");
    QTest::mouseClick(form.cmdSttDefBrowse, Qt::LeftButton);
    EXPECT_EQ(defValue.text(), "/x/y.log");
    EXPECT_EQ(box.text(), "[SECSLogFileDefault Value::]: File does not exist. \r\n");
}

TEST_F(SettingInputsTest, aFolderSettingPicksAFolder) {
    show("SECSILogPath", "", "");
    dialogs.choices = {QString::fromStdString(scratch.path().string())};
    QTest::mouseClick(form.cmdSttBrowse, Qt::LeftButton);
    ASSERT_EQ(dialogs.folders.size(), 1u);
    EXPECT_EQ(dialogs.folders[0].title, "Select file...");
    EXPECT_TRUE(dialogs.files.empty());
    EXPECT_EQ(value.text().toStdString(), scratch.path().string());
}

TEST_F(SettingInputsTest, aCancelledDialogLeavesTheField) {
    show("SECSLogFile", "stays.log", "default.log");
    QTest::mouseClick(form.cmdSttBrowse, Qt::LeftButton);
    QTest::mouseClick(form.cmdSttDefBrowse, Qt::LeftButton);
    EXPECT_EQ(value.text(), "stays.log");
    EXPECT_EQ(defValue.text(), "default.log");
}

TEST_F(SettingInputsTest, numbersAreStoredTrimmedPasswordsAsTyped) {
    show("DeviceID", " 5 ", "6");
    EXPECT_EQ(stored(txtSttValue), "5");
    show("AdministratorPassword", " pw ", "x");
    EXPECT_EQ(stored(txtSttValue), " pw ");
}

}  // namespace
}  // namespace stelvan::settings
