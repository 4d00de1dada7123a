#pragma once

#include <QHash>
#include <QString>
#include <QWidget>

/// Texts and error marks of entry fields: text boxes, text areas and combo boxes.
namespace Fields {

QString fieldText(const QWidget* field);
void setFieldText(QWidget* field, const QString& text);

/// The texts of the text and combo boxes in a screen or a part of it, by their names.
QHash<QString, QString> textsOf(const QWidget& part);
/// Fills such boxes; names without a box are left out. A combo box keeps its choice if it does not offer a
/// text.
void setTexts(const QWidget& part, const QHash<QString, QString>& texts);

/// What a field is called for screen readers, such as "Minimum Pressure".
QString nameOf(const QWidget* field);
/// Shows a field as wrong, or in the system's colours again.
void markField(QWidget* field);
void unmarkField(QWidget* field);
/// Describes a marked field to screen readers: that it is wrong, and its hint, such as the range.
void describeMark(QWidget* field);
bool isMarked(const QWidget* field);

/// Focuses the field of a screen to start in: the wanted one or, if that is null, the first that takes input,
/// otherwise the first that the Tab key reaches.
void focusFirst(QWidget& screen, QWidget* wanted);

} // namespace Fields
