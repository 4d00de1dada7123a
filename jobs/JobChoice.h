#pragma once

#include "core/store/JobHeader.h"

#include <QString>

#include <optional>

class QComboBox;

/// The box with the job that new tanks belong to. It finds jobs as the user types. It stores nothing.
namespace JobChoice {

/// Makes an ordinary combo box, whose screen is prepared already, one for jobs.
void prepare(QComboBox* box);
/// Offers a new job, a given one, which is chosen if it exists, and the newest ones. Throws DatabaseFault.
void fill(QComboBox* box, const QString& jobID);
/// Once the user has picked an item: asks for the ID of a new job. Throws DatabaseFault.
void take(QComboBox* box);
/// The chosen job; empty for none. Marks the box and says so if there is none. Throws DatabaseFault.
QString require(QComboBox* box, const QString& request);
/// Tells that the chosen new job has been added elsewhere meanwhile. From here on the box finds it like any
/// other.
void refuseNew(QComboBox* box);
/// The header of the chosen job if it is a new one, which is stored together with its first tanks. Throws
/// DatabaseFault.
std::optional<JobHeader> newHeader(const QComboBox* box);

} // namespace JobChoice
