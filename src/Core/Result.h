// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <optional>
#include <utility>

// Why a call failed, as handed back in a Result.
template <typename Error> struct Failure
{
    explicit Failure(Error why) : error(std::move(why)) {}
    Error error;
};

// What a call that may fail gives back: its value, or why it failed. The core's one way of
// reporting failure: a call that gives nothing back returns std::optional<Error> instead (nothing
// means it worked). `Error` is a typed error (AuthorizationError, UninstallError) where callers
// tell the cases apart, else the text the user reads.
template <typename T, typename Error = QString> class Result
{
public:
    Result(T value) : m_value(std::move(value)) {}
    Result(Failure<Error> failure) : m_error(std::move(failure.error)) {}

    [[nodiscard]] bool hasValue() const { return m_value.has_value(); }
    explicit operator bool() const { return hasValue(); }
    [[nodiscard]] T &operator*() { return *m_value; }
    [[nodiscard]] const T &operator*() const { return *m_value; }
    [[nodiscard]] T *operator->() { return &*m_value; }
    [[nodiscard]] const T *operator->() const { return &*m_value; }
    // Empty while there is a value.
    [[nodiscard]] const Error &error() const { return m_error; }

private:
    std::optional<T> m_value;
    Error m_error{};
};
