#pragma once
// Numbers the events of a finished table and ties the opticals to their cuts.

class LoggerHandle;
class cutdb;

/// Sorts the table, numbers its events, decides what belongs to each optical, and adds an optical row for each
/// chain of transitions under none. An optical that lies over no cut is marked as an error.
void classify_opticals(cutdb& db, LoggerHandle& logger);
