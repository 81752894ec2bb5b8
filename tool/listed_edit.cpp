#include "tool/listed_edit.h"

#include "host/settings.h"
#include "tool/tool_error.h"

#include <climits>

namespace tool {

ListedEdit::ListedEdit(const EditPtr& edit) : edit_(edit) {
    const bool allowed = config_int("allow_auto_unrender", 1, INT_MIN, INT_MAX) != 0;
    if (!allowed || !RenderHistory::editContainsRenderedMaterial(edit)) return;
    const EditModifier copy = RenderHistory::makeCopyAndUnrenderAll(edit);
    if (!copy.edit) throw JobError("the edit couldn't be copied without its rendered material");
    stored_ = copy.edit->cookie;
    edit_ = EditPtr();
    edit_.i_open(*stored_, edit_open_default);
    if (!edit_) throw JobError("the copy of the edit without its rendered material couldn't be opened");
}

ListedEdit::~ListedEdit() {
    edit_ = EditPtr();
    if (stored_) EditManager::deleteEditFileAndBackups(*stored_, LightweightString<char>(), 1);
}

} // namespace tool
