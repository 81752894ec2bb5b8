#pragma once
// The cutlist files of one edit, one a reel.

#include "host/settings.h"

#include <memory>

class CutlistSetRec : public ArrayRec {
public:
    /// Not valid with a reel below 1.
    CutlistSetRec(const LightweightString<wchar_t>& file, int reel);

    int compare(const ArrayRec& other) const override;
    void printOn(GrowString& out) const override;

    LightweightString<wchar_t> file;
    std::int32_t reel = 1;
    std::int32_t subreel = 1;
    std::int32_t valid = 0;
};

class CutlistSet : public Array {
public:
    CutlistSet();

    void printOn(GrowString& out) const override;
    /// Null, or the text of the error.
    const char* add_reel(std::unique_ptr<CutlistSetRec> record);
    const CutlistSetRec& reel(unsigned index) const;

    std::int32_t reel_count = 0;
};
