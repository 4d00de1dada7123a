#pragma once

class QComboBox;

/// A box in which the job is chosen that something is to be stored in. Its data hold the jobs' IDs.
namespace JobChoice {

/// Offers a new job, the job at work, which is chosen, and the newest jobs. Throws DatabaseFault.
void fill(QComboBox* box);

/// Call when the user has chosen an entry: for a new job it asks for the ID, adds the job with the user's
/// defaults and chooses it. Throws DatabaseFault.
void take(QComboBox* box);

} // namespace JobChoice
