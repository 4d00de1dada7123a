#pragma once

#include <QString>

class QComboBox;

/// The combo box with the job that new tanks belong to. Its items hold the ID of their job as data.
namespace JobChoice {

/// Offers a new job, the one at work, which is chosen, and the newest ones. Throws DatabaseFault.
void fill(QComboBox* box);
/// Once the user has picked an item: asks for the ID of a new job, and adds the job. Throws DatabaseFault.
void take(QComboBox* box);
/// The chosen job; empty for none. Marks the box and says so if there is none.
QString require(QComboBox* box, const QString& request);

} // namespace JobChoice
