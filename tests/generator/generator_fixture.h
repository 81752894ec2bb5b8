#pragma once
// A run of the generator into a directory of its own: fresh options, a clock that stands still.

#include "cutlist/cutlist_options.h"
#include "embedded/services.h"
#include "quillbrook/cutlist.h"
#include "reports/cutdb.h"
#include "tests/generator/made_edit.h"
#include "tests/support/environment.h"
#include "tests/support/recording_logger.h"
#include "tests/support/scratch_directory.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace generator_test {

class GeneratorTest : public testing::Test {
protected:
    GeneratorTest() {
        cutlist_options() = CutlistOptions();
        embedded::clear_host_settings();
        block.set("chan_type", "1");
        block.set("chan_num", "0");
        block.set("output_file", scratch.file("list.txt"));
    }
    ~GeneratorTest() override {
        cutlist_options() = CutlistOptions();
        embedded::clear_host_settings();
    }

    bool make(const EditPtr& edit, CueList* cues = nullptr) {
        return make_cutlist_from_edit(edit, logger, 0, &block, cues, true);
    }
    /// Makes the list of what `builder` holds.
    bool make(EditBuilder& builder) {
        const EditPtr edit = builder.finish();
        return make(edit, EditBuilder::cues_of(edit));
    }

    bool stands(const char* name) const { return std::filesystem::exists(scratch.file(name)); }

    /// The saved table.
    const cutdb& table() {
        saved = std::make_unique<cutdb>(fromUTF8(scratch.file("list.cdb").c_str(), -1), &logger);
        return *saved;
    }
    unsigned rows() { return table().get_num_records(); }
    std::string param(const char* name) {
        const char* value = table().get_param_val(name);
        return value ? value : "(none)";
    }
    std::string field(unsigned row, cutdb_field column) {
        const dbrecord* record = table().get_record(row);
        const char* text = record ? record->get_field(static_cast<unsigned short>(column)) : nullptr;
        return text ? text : "";
    }
    /// One column of all rows, with blanks between: "1 1 2".
    std::string column(cutdb_field number) {
        std::string all;
        const unsigned count = rows();
        for (unsigned row = 0; row < count; ++row)
            all += (row == 0 ? "" : " ") + (field(row, number).empty() ? "-" : field(row, number));
        return all;
    }

    EnvironmentValue clock{"SOURCE_DATE_EPOCH", "1000000"};
    EnvironmentValue zone{"TZ", "UTC"};
    ScratchDirectory scratch;
    RecordingLogger logger;
    embedded::settings_block block;
    std::unique_ptr<cutdb> saved;
};

} // namespace generator_test
