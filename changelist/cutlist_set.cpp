#include "changelist/cutlist_set.h"

#include <memory>

namespace {

constexpr const char* not_printed = "printOn not supported";

int order(std::int32_t a, std::int32_t b) { return a < b ? -1 : a > b ? 1 : 0; }

} // namespace

CutlistSetRec::CutlistSetRec(const LightweightString<wchar_t>& file_name, int reel_number) : file(file_name) {
    if (reel_number < 1) return;
    reel = reel_number;
    valid = 1;
}

int CutlistSetRec::compare(const ArrayRec& other) const {
    const auto& record = static_cast<const CutlistSetRec&>(other);
    const int by_reel = order(reel, record.reel);
    return by_reel != 0 ? by_reel : order(subreel, record.subreel);
}

void CutlistSetRec::printOn(GrowString& out) const { out.append(not_printed); }

CutlistSet::CutlistSet() { sorted(true); }

void CutlistSet::printOn(GrowString& out) const { out.append(not_printed); }

const char* CutlistSet::add_reel(std::unique_ptr<CutlistSetRec> record) {
    if (record->valid == 0 || find(*record) > 0) return "Error in reel number assignment\n";
    add(record.get());
    record.release();
    return nullptr;
}

const CutlistSetRec& CutlistSet::reel(unsigned index) const {
    return static_cast<const CutlistSetRec&>(*(*this)[index]);
}
