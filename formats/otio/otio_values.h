#pragma once
// Objects and times of .otio documents in the making.

#include "embedded/fraction.h"
#include "embedded/rates.h"
#include "formats/json_document.h"

#include <string>
#include <string_view>

namespace formats::otio {

using embedded::Fraction;
using embedded::RateInfo;

/// Makes values that belong to one document.
class Values {
public:
    explicit Values(JsonPool& pool) : pool_(pool) {}

    JsonValue text(std::string_view bytes) const;
    /// An object of that schema; a plain one where it is empty.
    JsonValue object(const char* schema = "") const;
    static JsonValue array() { return JsonValue(rapidjson::kArrayType); }

    void add(JsonValue& object, const char* key, JsonValue value) const;
    void add(JsonValue& object, const char* key, std::string_view value) const { add(object, key, text(value)); }
    /// Nothing where the text is empty.
    void add_given(JsonValue& object, const char* key, std::string_view value) const;
    void push(JsonValue& array, JsonValue value) const { array.PushBack(value, pool_); }
    /// `{"quillbrook": own}` under "metadata"; without it where `own` is empty.
    void add_own(JsonValue& object, JsonValue own) const;

    /// In frames of the rate where a double holds them, else as a count at a rate that is far above those of films.
    /// What neither holds exactly is the nearest, and `exact` is written to `own` under `key`.
    JsonValue time(const Fraction& seconds, const RateInfo& rate, JsonValue& own, const char* key) const;
    /// The same of a time that is written nowhere else: `measured` is what the key stands for.
    JsonValue time(const Fraction& seconds, const RateInfo& rate, JsonValue& own, const char* key,
                   const Fraction& measured) const;
    JsonValue frames(double count, const RateInfo& rate) const;
    static JsonValue number(double value) { return JsonValue(value); }
    JsonValue range(JsonValue start, JsonValue duration) const;
    /// Adds "NUM/DEN" to the exact values of `own`.
    void add_exact(JsonValue& own, const char* key, const Fraction& value) const;

private:
    JsonPool& pool_;
};

/// "NUM/DEN", as `fraction_of_text` reads it.
std::string text_of(const Fraction& value);
/// Whether a double is exactly that.
bool is_double(const Fraction& value);

} // namespace formats::otio
