#pragma once
// The cuts of upper tracks that take part in opticals.

class cutdb;

/// Gives every upper-track cut that overlaps an optical drawing on its track the optical's reference; of
/// several opticals the last counts. `db` is sorted by optical record, track and edit position.
void assign_upper_tracks(cutdb& db);
