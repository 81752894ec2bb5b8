// Our reader of compound files against another one, stream by stream.

#include "formats/compound/compound_file.h"
#include "tests/support/aaf_samples.h"

#include <gmock/gmock.h>
#include <gsf/gsf.h>
#include <rapidcheck/gtest.h>

#include <map>
#include <memory>

using compound_writer::Node;

namespace {

using Streams = std::map<std::string, std::string>; ///< by path; storages with a "/" behind

struct Release {
    void operator()(void* object) const { g_object_unref(object); }
};
template <class T> using Held = std::unique_ptr<T, Release>;

void collect(GsfInfile* folder, const std::string& path, Streams& found) {
    for (int i = 0; i < gsf_infile_num_children(folder); ++i) {
        const Held<GsfInput> child(gsf_infile_child_by_index(folder, i));
        const std::string name = path + gsf_infile_name_by_index(folder, i);
        if (GSF_IS_INFILE(child.get()) && gsf_infile_num_children(GSF_INFILE(child.get())) >= 0) {
            found[name + "/"];
            collect(GSF_INFILE(child.get()), name + "/", found);
            continue;
        }
        const auto size = static_cast<std::size_t>(gsf_input_size(child.get()));
        const guint8* bytes = size > 0 ? gsf_input_read(child.get(), size, nullptr) : nullptr;
        found[name] = bytes ? std::string(reinterpret_cast<const char*>(bytes), size) : std::string();
    }
}

Streams streams_of_the_other(const std::string& bytes) {
    gsf_init();
    Streams found;
    const auto* data = reinterpret_cast<const guint8*>(bytes.data());
    const Held<GsfInput> input(gsf_input_memory_new(data, static_cast<gsf_off_t>(bytes.size()), FALSE));
    const Held<GsfInfile> root(gsf_infile_msole_new(input.get(), nullptr));
    if (root) collect(root.get(), "", found);
    return found;
}

void collect(const formats::compound::File& file, formats::compound::StorageId folder, const std::string& path,
             Streams& found) {
    for (const std::string& name : file.names(folder)) {
        if (const auto bytes = file.stream(folder, name)) found[path + name] = *bytes;
        const auto inner = file.storage(folder, name);
        if (!inner) continue;
        found[path + name + "/"];
        collect(file, *inner, path + name + "/", found);
    }
}

Streams streams_of_ours(const std::string& bytes) {
    formats::compound::File file;
    Streams found;
    if (file.open(bytes)) collect(file, formats::compound::root_storage, "", found);
    return found;
}

TEST(OtherReader, FindsTheSameStreamsInAnEdit) {
    for (const std::size_t size : {512u, 4096u}) {
        aaf_writer::Made made = aaf_samples::everything();
        made.sector_size = size;
        const std::string bytes = aaf_writer::written(made);
        EXPECT_GT(streams_of_ours(bytes).size(), 200u);
        EXPECT_EQ(streams_of_ours(bytes), streams_of_the_other(bytes));
    }
}

Node random_storage(const std::string& name, int depth) {
    Node node{name, true, {}, {}, {}};
    const int count = *rc::gen::inRange(0, depth == 0 ? 30 : 8);
    for (int i = 0; i < count; ++i) {
        const std::string child = std::string(1, static_cast<char>('a' + i % 26)) + std::to_string(i);
        if (depth < 4 && *rc::gen::inRange(0, 3) == 0) {
            node.children.push_back(random_storage(child, depth + 1));
            continue;
        }
        const auto size =
            static_cast<std::size_t>(*rc::gen::element(0, 1, 63, 64, 65, 511, 513, 4095, 4096, 4097, 9000));
        node.children.push_back({child, false, {}, std::string(size, static_cast<char>('A' + i % 26)), {}});
    }
    return node;
}

RC_GTEST_PROP(OtherReader, FindsTheSameStreamsInAnyTree, ()) {
    const Node root = random_storage("Root Entry", 0);
    const std::string bytes = compound_writer::written(root, {*rc::gen::element<std::size_t>(512, 4096), {}});
    RC_ASSERT(streams_of_ours(bytes) == streams_of_the_other(bytes));
}

} // namespace
