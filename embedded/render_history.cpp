// Rendered material, and the copies of edits that go without it.

#include "embedded/edit_data.h"
#include "embedded/edit_store.h"
#include "embedded/services.h"

#include <cstdio>
#include <filesystem>
#include <utility>

using embedded::EditStore;

namespace embedded {

namespace {

std::string path_of_copy(const Cookie& cookie) {
    return (std::filesystem::path(work_directory()) / (std::string(cookie.asString(false).c_str()) + ".otio")).string();
}

Warnings& warnings_of_copy() {
    static auto& warnings = *new Warnings;
    return warnings;
}

EditPtr open_copy(const Cookie& cookie) {
    EditPtr copy = EditStore::get().open(cookie);
    if (!copy) EditStore::get().delete_file(cookie);
    return copy;
}

EditPtr copy_without_renders(const Edit::Impl& edit) {
    const EditBuilder::Unrender& unrender = edit.sequence->unrender;
    warnings_of_copy().clear();
    EditStore& store = EditStore::get();
    const Cookie cookie = cookie_of_edit("copy:" + edit.name, store.next_serial());
    const std::string path = path_of_copy(cookie);
    if (!unrender.write(path)) return {};
    store.add_file(cookie, path, edit.name, unrender.open);
    return open_copy(cookie);
}

} // namespace

Warnings take_warnings_of_copy() { return std::exchange(warnings_of_copy(), {}); }

void tell_of_copy(const Warnings& warnings) {
    Warnings& waiting = warnings_of_copy();
    waiting.insert(waiting.end(), warnings.begin(), warnings.end());
}

} // namespace embedded

bool RenderHistory::editContainsRenderedMaterial(const EditPtr& edit) {
    return edit && edit->impl()->sequence && edit->impl()->sequence->rendered_material;
}

EditModifier RenderHistory::makeCopyAndUnrenderAll(const EditPtr& edit) {
    if (!edit || !edit->impl()->sequence) return EditModifier({});
    const embedded::EditBuilder::Unrender& unrender = edit->impl()->sequence->unrender;
    if (!unrender.write || !unrender.open) return EditModifier({});
    return EditModifier(embedded::copy_without_renders(*edit->impl()));
}

bool RenderHistory::isRendered(Cookie cookie) {
    const Edit* edit = EditStore::get().find_open(cookie);
    return edit && edit->impl()->medium && edit->impl()->medium->rendered;
}

void EditManager::deleteEditFileAndBackups(const Cookie& cookie, LightweightString<char>, unsigned) {
    EditStore::get().delete_file(cookie);
}
