// Sets or clears one environment variable for the life of the object, then
// puts back what was there.
#pragma once

#include <cstdlib>
#include <string>

class ScopedVariable {
 public:
  ScopedVariable(const char* name, const char* value) : name_(name), had_(std::getenv(name) != nullptr) {
    if (had_) old_ = std::getenv(name);
    if (value != nullptr) setenv(name, value, 1);
    else unsetenv(name);
  }
  ~ScopedVariable() {
    if (had_) setenv(name_, old_.c_str(), 1);
    else unsetenv(name_);
  }

 private:
  const char* name_;
  bool had_;
  std::string old_;
};
