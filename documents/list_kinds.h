#pragma once
// All lists that documents may hold, by id, and the documents made of them.

#include "documents/change_lists.h"
#include "documents/cut_film.h"
#include "documents/document.h"
#include "documents/order_lists.h"
#include "documents/profile.h"

#include <string_view>
#include <vector>

namespace documents {

bool is_list_id(std::string_view id);

/// Of these, in their order, the lists that a cut has.
std::vector<std::string> cut_list_ids(const std::vector<std::string>& ids);

/// The same of a recut.
std::vector<std::string> change_list_ids(const std::vector<std::string>& ids);

/// And of an order. `change`: one that was held against earlier ones; `rolls`: one whose pieces are laid on new rolls.
std::vector<std::string> order_list_ids(const std::vector<std::string>& ids, bool change, bool rolls);

/// The lists of a profile that a cut has.
Document document_of(const CutFilm& cut, const Profile& profile);
Document document_of(const ChangeFilm& film, const Profile& profile);
Document document_of(const OrderFilm& film, const Profile& profile);

} // namespace documents
