#include "core/shell/FieldChecks.h"

#include "core/base/Numbers.h"
#include "core/shell/BrennovalMain.h"
#include "core/shell/Dialogs.h"
#include "core/shell/ErrorReport.h"
#include "core/shell/Screens.h"
#include "core/store/Gateway.h"
#include "core/store/SessionStore.h"

#include <QComboBox>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QPlainTextEdit>

namespace UtilityFunctions {

namespace {

// Pale yellow behind red text: the same in light and dark.
const QColor errorBack(0xFF, 0xFF, 0x80);
const QColor errorText(0xFF, 0, 0);
const char* const markProperty = "fieldError";

void showError(const QString& text) {
    Dialogs::current().show({text, "Error"});
}

std::optional<double> numberIn(const QWidget* field) {
    return ParseNumber(FieldText(field).toStdString());
}

bool failNumeric(QWidget* field, bool showMessage, const QString& message) {
    MarkField(field);
    field->setFocus();
    if (showMessage)
        showError(message);
    else
        SetFieldText(field, "0");
    return false;
}

struct Application {
    QString name;
    std::int16_t helpContext;
};

const Application& application(int index) {
    static const Application all[] = {{"Expansion Tank", 101},
                                      {"Thermal Expansion Tank", 102},
                                      {"Hydropneumatic Tank", 103},
                                      {"Shock Arrestor Tank", 104},
                                      {"Glycol Make-up Package", 105}};
    return all[index];
}
constexpr int applications = 5;

QString general(double value) {
    return QString::fromStdString(NumberText(value));
}

} // namespace

QString FieldText(const QWidget* field) {
    if (const auto* line = dynamic_cast<const QLineEdit*>(field))
        return line->text();
    if (const auto* area = dynamic_cast<const QPlainTextEdit*>(field))
        return area->toPlainText();
    const auto* combo = dynamic_cast<const QComboBox*>(field);
    return combo ? combo->currentText() : QString();
}

void SetFieldText(QWidget* field, const QString& text) {
    if (auto* line = dynamic_cast<QLineEdit*>(field))
        line->setText(text);
    else if (auto* area = dynamic_cast<QPlainTextEdit*>(field))
        area->setPlainText(text);
    else
        static_cast<QComboBox*>(field)->setCurrentText(text);
}

void MarkField(QWidget* field) {
    QPalette palette = field->palette();
    for (const auto role : {QPalette::Base, QPalette::Window, QPalette::Button})
        palette.setColor(role, errorBack);
    for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText})
        palette.setColor(role, errorText);
    field->setPalette(palette);
    field->setProperty(markProperty, true);
}

void UnmarkField(QWidget* field) {
    field->setPalette(QPalette());
    field->setProperty(markProperty, false);
}

bool IsMarked(const QWidget* field) {
    return field->property(markProperty).toBool();
}

bool ValidateNumeric(QWidget* field, bool showMessage) {
    if (FieldText(field).isEmpty()) {
        SetFieldText(field, "0");
        return true;
    }
    const auto value = numberIn(field);
    if (!value)
        return failNumeric(field, showMessage, "Please enter a valid numeric value!");
    if (*value < 0)
        return failNumeric(field, showMessage, "Please enter a positive number!");
    UnmarkField(field);
    return true;
}

bool ValidateMinMax(QWidget* field, double minimum, double maximum) {
    const double value = ToDouble(FieldText(field).toStdString());
    if (value == 0) // an empty field has become a zero and is no error
        return true;
    if (value >= minimum && value <= maximum) {
        UnmarkField(field);
        return true;
    }
    showError("Please enter a value between " + general(minimum) + " and " + general(maximum) + ".");
    MarkField(field);
    return false;
}

bool ValidateValueRange(QWidget* minimumField, QWidget* maximumField) {
    const double minimum = ToDouble(FieldText(minimumField).toStdString());
    const double maximum = ToDouble(FieldText(maximumField).toStdString());
    const bool passed = minimum < maximum;
    if (!passed)
        showError("The maximum value must be greater than the minimum value!");
    for (QWidget* field : {minimumField, maximumField})
        passed ? UnmarkField(field) : MarkField(field);
    return passed;
}

bool ValidateValueEntered(QWidget* field, bool showMessage) {
    if (!FieldText(field).isEmpty()) {
        UnmarkField(field);
        return true;
    }
    if (showMessage) {
        MarkField(field);
        field->setFocus();
        showError("Please enter a valid value!");
    }
    return false;
}

bool ValidateItemSelected(QWidget* field, bool showMessage) {
    if (!FieldText(field).isEmpty()) {
        UnmarkField(field);
        return true;
    }
    MarkField(field);
    field->setFocus();
    if (showMessage)
        showError("Please enter a valid value!");
    return false;
}

QString SqlEscape(const QString& text) {
    return QString(text).replace("'", "''");
}

QString FractionConversion(double value) {
    const QString text = QString::fromStdString(NumberText(value));
    const QString inch = "\"";
    QString result = text + inch;
    Trap("FractionConversion", [&] {
        const auto point = text.indexOf('.');
        if (point < 1) // a value below one stays as it is written
            return;
        const QString fraction = text.mid(point);
        const double whole = Round(value - ToDouble(fraction.toStdString()), 0); // no dust of the subtraction
        Connection connection = openDatabase("Sys");
        Recordset rows;
        rows.Open("SELECT * FROM tblFractionConversion WHERE DecimalValue = " + fraction, connection);
        result = general(whole) + "-" + (rows.AtEnd() ? QString() : rows["Fraction"].text()) + inch;
    });
    return result;
}

std::int16_t GetNextNumber() {
    std::int16_t next = 1;
    QString jobID;
    if (!Session::JobID.read(jobID))
        return next;
    Connection connection = openDatabase("User");
    Recordset rows;
    rows.Open("SELECT MAX(TankNo) AS MaxTankNo FROM tblJobData GROUP BY JobID HAVING JobID = '" +
                  SqlEscape(jobID) + "'",
              connection);
    if (!rows.AtEnd())
        next = ToInt16(rows["MaxTankNo"].number() + 1);
    return next;
}

void CancelJobInput(const QString& jobID) {
    Trap("CancelJobInput", [&] {
        QString mode;
        if (!Session::Mode.read(mode))
            return;
        Connection connection = openDatabase("User");
        Recordset tanks;
        tanks.Open(
            "SELECT * FROM tblJobData INNER JOIN tblJobHeader ON tblJobData.JobID = tblJobHeader.JobID WHERE "
            "tblJobHeader.JobID = '" +
                SqlEscape(jobID) + "'",
            connection, CursorType::Keyset);
        if (!tanks.AtEnd())
            return;
        Recordset header;
        header.Open("SELECT * FROM tblJobHeader WHERE JobID = '" + SqlEscape(jobID) + "'", connection,
                    CursorType::Keyset);
        if (!header.AtEnd())
            header.Delete();
    });
}

std::int16_t SetHelpContext() {
    const QString tankClass = Session::TankClass.text();
    for (int i = 0; i < applications; ++i)
        if (application(i).name == tankClass)
            return application(i).helpContext;
    return 0;
}

void FormatScreen(Screen& screen) {
    auto* window = dynamic_cast<QMdiSubWindow*>(screen.parentWidget());
    if (!window || !BrennovalMain::instance())
        return;
    window->adjustSize();
    const QSize space = BrennovalMain::instance()->area()->size();
    window->move(std::max(0, (space.width() - window->width()) / 2),
                 std::max(0, (space.height() - window->height()) / 2));
}

void SetStatusBarText() {
    SetStatusText("Ordwick Company Brennoval Version " + ProgramVersion());
}

QString AppNameExpansion() {
    return application(0).name;
}
QString AppNameThermal() {
    return application(1).name;
}
QString AppNameHydro() {
    return application(2).name;
}
QString AppNameShock() {
    return application(3).name;
}
QString AppNamePackage() {
    return application(4).name;
}

} // namespace UtilityFunctions
