#pragma once
// Sets an environment variable for one test and puts the old state back.

#include <cstdlib>
#include <string>

class EnvironmentValue {
public:
    EnvironmentValue(const char* name, const char* value) : name_(name) {
        const char* old = std::getenv(name);
        was_set_ = old != nullptr;
        if (old) old_ = old;
        if (value) {
            ::setenv(name, value, 1);
        } else {
            ::unsetenv(name);
        }
    }
    ~EnvironmentValue() {
        if (was_set_) {
            ::setenv(name_.c_str(), old_.c_str(), 1);
        } else {
            ::unsetenv(name_.c_str());
        }
    }
    EnvironmentValue(const EnvironmentValue&) = delete;
    EnvironmentValue& operator=(const EnvironmentValue&) = delete;

private:
    std::string name_;
    std::string old_;
    bool was_set_ = false;
};
