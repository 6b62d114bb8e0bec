// Status and Result<T>: expected failures as values.
//
// A failed Status carries a message that reads "context: reason"; callers add their own
// context with Wrap() as the failure travels up. Nothing here throws.
#pragma once

#include <optional>
#include <string>
#include <utility>

namespace veltor {

class [[nodiscard]] Status {
 public:
  Status() = default;
  static Status Ok() { return Status(); }
  static Status Error(std::string message) { return Status(std::move(message), true); }

  bool ok() const { return !failed_; }
  const std::string& message() const { return message_; }

  // Prefixes the message with "context: " (a no-op on success).
  Status Wrap(const std::string& context) const {
    if (ok()) return *this;
    return Error(context + ": " + message_);
  }

 private:
  Status(std::string message, bool failed) : message_(std::move(message)), failed_(failed) {}
  std::string message_;
  bool failed_ = false;
};

template <typename T>
class [[nodiscard]] Result {
 public:
  Result(T value) : value_(std::move(value)) {}  // NOLINT: implicit by design
  Result(Status status) : status_(std::move(status)) {}  // NOLINT: must be a failure

  bool ok() const { return value_.has_value(); }
  const Status& status() const { return status_; }
  const std::string& message() const { return status_.message(); }

  T& value() & { return *value_; }
  const T& value() const& { return *value_; }
  T&& value() && { return std::move(*value_); }
  T* operator->() { return &*value_; }
  const T* operator->() const { return &*value_; }
  T& operator*() { return *value_; }
  const T& operator*() const { return *value_; }

 private:
  std::optional<T> value_;
  Status status_;
};

}  // namespace veltor
