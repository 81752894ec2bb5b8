#include "reports/cut_s.h"

cut_s::cut_s()
    : keycode_in(get_invalid_label()->get_label_point(0)), keycode_out(keycode_in), inkcode_in(keycode_in),
      inkcode_out(keycode_in), prim_tc(label_none, MediumRollIdent(1, 1)), aud_tc(label_none, MediumRollIdent(1, 1)),
      src24P_tc(label_none, MediumRollIdent(1, 1)) {
    prim_tc = aud_tc = src24P_tc = *invalid_edit_label();
}

cut_s::~cut_s() = default;
