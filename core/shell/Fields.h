#pragma once

#include <QString>
#include <QWidget>

/// Texts and error marks of entry fields: text boxes, text areas and combo boxes.
namespace Fields {

QString FieldText(const QWidget* field);
void SetFieldText(QWidget* field, const QString& text);

/// Shows a field as wrong, or in the system's colours again.
void MarkField(QWidget* field);
void UnmarkField(QWidget* field);
bool IsMarked(const QWidget* field);

} // namespace Fields
