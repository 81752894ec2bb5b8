#include "changelist/run_state.h"

ChangeRun& change_run() {
    static ChangeRun run;
    return run;
}
