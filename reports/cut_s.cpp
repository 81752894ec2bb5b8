#include "reports/cut_s.h"

cut_s::cut_s()
    : keycode_in(get_invalid_label()->get_label_point(0)), keycode_out(keycode_in), inkcode_in(keycode_in),
      inkcode_out(keycode_in), prim_tc(*invalid_edit_label()), aud_tc(prim_tc), src24P_tc(prim_tc) {}

cut_s::~cut_s() = default;
