#include "embedded/edit_store.h"

#include "embedded/edit_data.h"

#include <algorithm>
#include <filesystem>

namespace embedded {

namespace {

namespace fs = std::filesystem;
using Lock = std::lock_guard<std::recursive_mutex>;

// A file "name.otio" has its backups beside it as "name.otio.bak...".
void remove_with_backups(const std::string& path) {
    std::error_code failed;
    const fs::path file(path);
    const std::string backup = file.filename().string() + ".bak";
    std::vector<fs::path> doomed{file};
    for (fs::directory_iterator entry(file.parent_path(), failed), end; !failed && entry != end;
         entry.increment(failed))
        if (entry->path().filename().string().rfind(backup, 0) == 0) doomed.push_back(entry->path());
    for (const fs::path& path_of_one : doomed)
        fs::remove(path_of_one, failed);
}

} // namespace

// Never destroyed, so that edits may be closed as late as they like.
EditStore& EditStore::get() {
    static EditStore* const store = new EditStore;
    return *store;
}

EditStore::Stored* EditStore::find(Cookie& cookie) {
    if (cookie.object != static_cast<std::uint8_t>(ObjectKind::edit)) return nullptr;
    if (cookie.identity[1] == 0) {
        const auto serials = serials_of_text_.find(cookie.identity[0]);
        if (serials == serials_of_text_.end()) return nullptr;
        cookie.identity[1] = *serials->second.begin();
    }
    const auto found = by_serial_.find(cookie.identity[1]);
    return found == by_serial_.end() ? nullptr : &found->second;
}

void EditStore::forget(const Cookie& cookie) {
    by_serial_.erase(cookie.identity[1]);
    const auto serials = serials_of_text_.find(cookie.identity[0]);
    if (serials == serials_of_text_.end()) return;
    serials->second.erase(cookie.identity[1]);
    if (serials->second.empty()) serials_of_text_.erase(serials);
}

void EditStore::add(Edit* edit) {
    const Lock lock(mutex_);
    // First what may fail: an edit that couldn't be added must not be found.
    auto& serials = serials_of_text_[edit->cookie.identity[0]];
    Stored& stored = by_serial_[edit->cookie.identity[1]];
    serials.insert(edit->cookie.identity[1]);
    stored.edit = edit;
}

void EditStore::remove(Edit* edit) {
    const Lock lock(mutex_);
    std::erase_if(listed_, [&](const Listed& listed) { return listed.edit == edit; });
    const auto found = by_serial_.find(edit->impl()->cookie.identity[1]);
    if (found == by_serial_.end() || found->second.edit != edit) return;
    found->second.edit = nullptr;
    if (!found->second.file) forget(edit->impl()->cookie);
}

EditPtr EditStore::open(const Cookie& cookie) {
    const Lock lock(mutex_);
    Cookie exact = cookie;
    EditPtr result;
    const Stored* stored = find(exact);
    if (!stored) return result;
    if (stored->edit && stored->edit->impl()->medium && !stored->edit->impl()->medium->opens) return result;
    if (stored->edit)
        result = stored->edit;
    else
        result = read(*stored->file, exact);
    if (result && result->impl()->sequence) make_current(result.get());
    return result;
}

Edit* EditStore::find_open(const Cookie& cookie) {
    const Lock lock(mutex_);
    Cookie exact = cookie;
    const Stored* stored = find(exact);
    return stored ? stored->edit : nullptr;
}

EditPtr EditStore::read(const File& file, const Cookie& cookie) {
    const File kept = file; // what is read may be forgotten meanwhile
    const EditPtr edit = kept.reader(kept.path);
    if (!edit) return edit;
    forget(edit->impl()->cookie);
    edit->impl()->cookie = edit->cookie = cookie;
    edit->impl()->name = kept.name;
    add(edit.get());
    return edit;
}

Edit* EditStore::current() const {
    const Lock lock(mutex_);
    const auto mine = [](const Listed& listed) { return listed.by == std::this_thread::get_id(); };
    const auto found = std::find_if(listed_.rbegin(), listed_.rend(), mine);
    if (found != listed_.rend()) return found->edit;
    return listed_.empty() ? nullptr : listed_.back().edit;
}

void EditStore::make_current(Edit* edit) {
    const Lock lock(mutex_);
    std::erase_if(listed_, [&](const Listed& listed) { return listed.edit == edit; });
    listed_.push_back({edit, std::this_thread::get_id()});
}

void EditStore::add_file(const Cookie& cookie, const std::string& path, const std::string& name, Reader reader) {
    const Lock lock(mutex_);
    serials_of_text_[cookie.identity[0]].insert(cookie.identity[1]);
    std::unique_ptr<const File> file(new File{path, name, std::move(reader)});
    by_serial_[cookie.identity[1]] = {nullptr, std::move(file)};
}

void EditStore::delete_file(const Cookie& cookie) {
    const Lock lock(mutex_);
    Cookie exact = cookie;
    const Stored* stored = find(exact);
    if (!stored || !stored->file || stored->file->path.empty()) return;
    remove_with_backups(stored->file->path);
    forget(exact);
}

} // namespace embedded
