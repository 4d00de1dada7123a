#pragma once

#include <QString>
#include <QWidget>

/// Texts and error marks of entry fields: text boxes, text areas and combo boxes.
namespace Fields {

QString fieldText(const QWidget* field);
void setFieldText(QWidget* field, const QString& text);

/// What a field is called for screen readers, such as "Minimum Pressure".
QString nameOf(const QWidget* field);
/// Shows a field as wrong, or in the system's colours again.
void markField(QWidget* field);
void unmarkField(QWidget* field);
bool isMarked(const QWidget* field);

} // namespace Fields
