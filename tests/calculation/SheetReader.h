#pragma once

#include <QMap>
#include <QString>
#include <QStringList>

/// Reads the steps of a calculation sheet from its text export, as a reviewer with a calculator would.
class SheetReader {
  public:
    /// Keeps the formula of each step, by its caption.
    explicit SheetReader(const QString& exported);

    const QStringList& captions() const { return order; }
    bool has(const QString& caption) const { return steps.contains(caption); }
    /// "V = 1000 gal": everything after the caption.
    QString formula(const QString& caption) const { return steps.value(caption); }
    /// The number at the end.
    double result(const QString& caption) const;
    /// What each part that holds numbers only comes to.
    QList<double> parts(const QString& caption) const;
    /// Everything, lines joined by blanks.
    QString whole;

  private:
    QMap<QString, QString> steps;
    QStringList order;
};
