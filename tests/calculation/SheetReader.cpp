#include "tests/calculation/SheetReader.h"

#include "core/base/Numbers.h"

#include <QRegularExpression>

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace {

/// Works out the numbers of a formula's part.
class Calculator {
  public:
    explicit Calculator(QString part) : text(part.replace(u'×', u'*').replace(u'−', u'-').remove(u' ')) {}

    double value() {
        const double all = sum();
        if (at != text.size())
            throw std::runtime_error(text.toStdString());
        return all;
    }

  private:
    bool accept(const QString& wanted) {
        if (QStringView(text).mid(at, wanted.size()) != wanted)
            return false;
        at += wanted.size();
        return true;
    }

    double sum() {
        double all = product();
        while (true) {
            if (accept("+"))
                all += product();
            else if (accept("-"))
                all -= product();
            else
                return all;
        }
    }

    double product() {
        double all = power();
        while (true) {
            if (accept("*"))
                all *= power();
            else if (accept("/"))
                all /= power();
            else
                return all;
        }
    }

    double power() {
        if (accept("-"))
            return -power();
        const double base = primary();
        return accept("^") ? std::pow(base, power()) : base;
    }

    double primary() {
        for (const char* function : {"round(", "max(", "min(", "sqrt(", "("})
            if (accept(function)) {
                QList<double> arguments{sum()};
                while (accept(","))
                    arguments.append(sum());
                if (!accept(")"))
                    throw std::runtime_error(text.toStdString());
                return applied(function, arguments);
            }
        static const QRegularExpression number(R"(\d+(\.\d+)?(E[+-]?\d+)?)");
        const auto match = number.match(text, at, QRegularExpression::NormalMatch,
                                        QRegularExpression::AnchorAtOffsetMatchOption);
        if (!match.hasMatch())
            throw std::runtime_error(text.toStdString());
        at += match.capturedLength();
        return match.captured().toDouble();
    }

    static double applied(std::string_view function, const QList<double>& arguments) {
        if (function == "round(")
            return Round(arguments.at(0), int(arguments.at(1)));
        if (function == "max(")
            return std::max(arguments.at(0), arguments.at(1));
        if (function == "min(")
            return std::min(arguments.at(0), arguments.at(1));
        return function == "sqrt(" ? std::sqrt(arguments.at(0)) : arguments.at(0);
    }

    QString text;
    qsizetype at = 0;
};

} // namespace

SheetReader::SheetReader(const QString& exported) {
    // A caption, a symbol and what it is equal to; the SI value at the right margin is not part of it.
    static const QRegularExpression step(R"(^ *(\S.*?) +([A-Za-z]+(?:_\w+)? = .*)$)");
    static const QRegularExpression si(R"( +[\d.−-]+(E[+-]?\d+)? (L|kPa|°C|m|mm|m/s|L/s|J|J/m|kJ/m³|mm²)$)");
    whole = QString(exported).simplified();
    QString caption;
    for (QString line : exported.split(u'\n')) {
        line.remove(si);
        if (const auto match = step.match(line); match.hasMatch()) {
            caption = match.captured(1);
            steps[caption] = match.captured(2);
            order.append(caption);
        } else if (line.trimmed().startsWith("= ") && !caption.isEmpty()) {
            steps[caption] += u' ' + line.trimmed();
        } else {
            caption.clear();
        }
    }
}

double SheetReader::result(const QString& caption) const {
    return formula(caption).section(" = ", -1).section(u' ', 0, 0).replace(u'−', u'-').toDouble();
}

QList<double> SheetReader::parts(const QString& caption) const {
    static const QRegularExpression name("[A-Za-z]+");
    QList<double> values;
    QStringList all = formula(caption).split(" = ").mid(1);
    all.removeLast();
    for (const QString& part : all) {
        QString names = part;
        names.remove("round").remove("max").remove("min").remove("sqrt");
        names.remove(QRegularExpression(R"(\dE[+-]?\d)"));
        if (!names.contains(name))
            values.append(Calculator(part).value());
    }
    return values;
}
