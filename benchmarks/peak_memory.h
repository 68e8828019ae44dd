#pragma once

namespace tessel::benchmarks {

/// Saves so many new stories in one transaction, each let go at once, and returns the most memory in kB that the process
/// has had at any time. 0 where the system does not tell.
long peakOfBulkSave(int storyCount);

}  // namespace tessel::benchmarks
