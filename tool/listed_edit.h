#pragma once
// The edit that lists are made of.

#include "host/edit.h"

#include <optional>

namespace tool {

/// An edit, or where the run allows it and it holds rendered material, its copy without that. The copy goes with this.
class ListedEdit {
public:
    /// Throws `JobError` where the copy can't be made.
    explicit ListedEdit(const EditPtr& edit);
    ~ListedEdit();
    ListedEdit(const ListedEdit&) = delete;
    ListedEdit& operator=(const ListedEdit&) = delete;

    const EditPtr& edit() const { return edit_; }

private:
    EditPtr edit_;
    std::optional<Cookie> stored_;
};

} // namespace tool
