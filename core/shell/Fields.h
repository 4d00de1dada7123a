#pragma once

#include <QString>
#include <QWidget>

/// The texts and marks of entry fields: text boxes, text areas and combo boxes.
namespace Fields {

QString FieldText(const QWidget* field);
void SetFieldText(QWidget* field, const QString& text);

/// Paints a field as wrong, and back in the system's colours.
void MarkField(QWidget* field);
void UnmarkField(QWidget* field);
bool IsMarked(const QWidget* field);

} // namespace Fields
