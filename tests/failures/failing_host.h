#pragma once
// A host each of whose services can fail at any one of its calls.

#include "embedded/services.h"
#include "host/counted.h"
#include "host/os.h"
#include "host/settings.h"

#include <memory>
#include <stdexcept>

namespace failures {

enum class Service { allocate, free, add_ref, release_ref, remove, open, write, message, read_option };
constexpr Service services[] = {Service::allocate,    Service::free,    Service::add_ref,
                                Service::release_ref, Service::remove,  Service::open,
                                Service::write,       Service::message, Service::read_option};

enum class Fault { throws, throws_no_exception, returns_null };

/// Which call of which service fails.
struct Failure {
    Service service = Service::allocate;
    long call = 0; ///< from 1; 0: none
    Fault fault = Fault::throws;
    long calls = 0;

    /// True where the service has to give null; throws where it has to.
    bool strikes(Service asked) {
        if (asked != service || ++calls != call) return false;
        if (fault == Fault::throws) throw std::runtime_error("struck");
        if (fault == Fault::throws_no_exception) throw 7;
        return true;
    }
    bool struck() const { return call > 0 && calls >= call; }
};

/// The standard services behind a failure.
class FailingHost : public operating_system, private memory_service, private file_service, private count_service {
public:
    explicit FailingHost(Failure& failure) : failure_(failure) { embedded::use_operating_system(this); }
    ~FailingHost() override { embedded::use_operating_system(nullptr); }

    memory_service& memory() override { return *this; }
    file_service& files() override { return *this; }
    count_service& counts() override { return *this; }

private:
    class FailingStream : public stream {
    public:
        FailingStream(Qb::Ptr<stream> target, Failure& failure) : target_(std::move(target)), failure_(failure) {}
        void write(const void* data, unsigned int count) override {
            failure_.strikes(Service::write);
            target_->write(data, count);
        }

    private:
        Qb::Ptr<stream> target_;
        Failure& failure_;
    };

    static operating_system& standard() { return embedded::standard_operating_system(); }

    void* allocate(std::size_t size) override {
        return failure_.strikes(Service::allocate) ? nullptr : standard().memory().allocate(size);
    }
    void free(void* block) override {
        const std::unique_ptr<void, void (*)(void*)> freed(block, [](void* it) { standard().memory().free(it); });
        failure_.strikes(Service::free);
    }
    void add_ref(use_count& count) override {
        failure_.strikes(Service::add_ref);
        standard().counts().add_ref(count);
    }
    int release_ref(use_count& count) override {
        const int left = standard().counts().release_ref(count);
        failure_.strikes(Service::release_ref);
        return left;
    }
    void remove(LightweightString<wchar_t> path) override {
        failure_.strikes(Service::remove);
        standard().files().remove(path);
    }
    Qb::Ptr<stream> open(LightweightString<wchar_t> path, int access, int creation, int sharing, int flags) override {
        if (failure_.strikes(Service::open)) return nullptr;
        Qb::Ptr<stream> file = standard().files().open(path, access, creation, sharing, flags);
        return file ? Qb::Ptr<stream>(new FailingStream(std::move(file), failure_)) : file;
    }

    Failure& failure_;
};

class FailingLogger : public LoggerHandle {
public:
    explicit FailingLogger(Failure& failure) : failure_(failure) {}
    void message(const LightweightString<wchar_t>&, int) override { failure_.strikes(Service::message); }

private:
    Failure& failure_;
};

class FailingBlock : public embedded::settings_block {
public:
    FailingBlock(const settings_block& values, Failure& failure) : settings_block(values), failure_(failure) {}

    int in(const LightweightString<char>& key, int& value) const override { return read(key, value); }
    int in(const LightweightString<char>& key, unsigned int& value) const override { return read(key, value); }
    int in(const LightweightString<char>& key, bool& value) const override { return read(key, value); }
    int in(const LightweightString<char>& key, LightweightString<char>& value) const override {
        return read(key, value);
    }
    int in(const LightweightString<char>& key, char* value) const override { return settings_block::in(key, value); }
    int in(const LightweightString<char>& key, strp_field& value) const override { return read(key, value); }

private:
    template <class Value> int read(const LightweightString<char>& key, Value& value) const {
        failure_.strikes(Service::read_option);
        return settings_block::in(key, value);
    }

    Failure& failure_;
};

} // namespace failures
