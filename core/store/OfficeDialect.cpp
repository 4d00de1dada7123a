#include "core/store/OfficeDialect.h"

namespace {

class Dialect : public SqlDialect {
  public:
    /// Names are stored as the server folds them, so that they need no quotes where they are plain words.
    QString quotedName(const QString& name) const override {
        return u'"' + name.toLower().replace(u'"', QStringLiteral("\"\"")) + u'"';
    }
    QString power(const QString& base, const QString& exponent) const override {
        return QStringLiteral("jet_power(%1, %2)").arg(base, exponent);
    }
    QString quotient(const QString& numerator, const QString& denominator) const override {
        return QStringLiteral("jet_quotient(%1, %2)").arg(numerator, denominator);
    }
    QString joined(const QString& left, const QString& right) const override {
        return QStringLiteral("jet_join(jet_text(%1), jet_text(%2))").arg(left, right);
    }
    QString dayFunction() const override { return QStringLiteral("jet_day"); }
    /// A fraction is a double: the server would calculate with all its decimals.
    QString number(const QString& text) const override {
        constexpr qsizetype digitsOfWhole = 18;
        const bool whole = text.size() <= digitsOfWhole && !text.contains(u'.') && !text.contains(u'e') &&
                           !text.contains(u'E');
        return whole ? text : QStringLiteral("double precision '%1'").arg(text);
    }
    QString truth(bool value) const override { return value ? QStringLiteral("1") : QStringLiteral("0"); }
    QString parameter(int number) const override { return u'$' + QString::number(number); }
    QString likeWord() const override { return QStringLiteral("ILIKE"); }
    /// Otherwise a backslash would be one.
    QString withoutEscape() const override { return QStringLiteral(" ESCAPE ''"); }
    bool nullsAreLargest() const override { return true; }
    /// The server gives rows back as they lie, and a changed row lies at the end.
    QStringList naturalOrder(const QString& table) const override {
        if (table.compare(QLatin1String("tblJobData"), Qt::CaseInsensitive) == 0)
            return {QStringLiteral("TankNo NULLS FIRST"),
                    officeRow}; // the index by which a file finds the lines of a job
        return table.startsWith(QLatin1String("tbl"), Qt::CaseInsensitive) ? QStringList(officeRow)
                                                                           : QStringList();
    }
};

} // namespace

const SqlDialect& officeDialect() {
    static const Dialect instance;
    return instance;
}
