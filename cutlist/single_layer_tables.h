#pragma once
// The tables of the single-layer lists. Types 1 and 2 share a table, so its numbers fall behind those of the files:
// sl1db is ".sl1" and ".sl2", sl2db is ".sl3", sl3db is ".sl4".

#include "host/recdb.h"

class LoggerHandle;
class cutdb;
struct sl1_rec;
struct sl2_rec;
struct sl3_rec;

class sl1db : public recdb {
public:
    sl1db();
};

class sl2db : public recdb {
public:
    sl2db();
};

class sl3db : public recdb {
public:
    sl3db();
};

void append(sl1db& list, const sl1_rec& piece);
void append(sl2db& list, const sl2_rec& piece);
void append(sl3db& list, const sl3_rec& piece);

/// Names the list after the report, tells of it, and sorts `db` by kind of record, track and edit position, which
/// is how it stays. False when there is nothing to walk.
bool begin_list(recdb& list, int number, cutdb& db, LoggerHandle& logger);
/// Replaces the list's file, without a header. A list without rows makes no file and leaves an old one.
void save_list(recdb& list);
