// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <utility>
#include <variant>

// Why an operation failed, ready to be shown: a whole Spanish sentence, and what kind of trouble it is.
struct Failure {
    enum class Kind {
        Other,
        Missing, // the file is not there
        Foreign, // the file is of another kind (an old Access file, a picture, ...)
        Damaged, // the file is ours but its content contradicts itself
        Locked, // another program holds it
        ReadOnly, // file or folder cannot be written
        Full, // no room left on the disk
        OldSchema, // the database lacks a column or table that newer versions added
        Cancelled, // the operator stopped it
    };

    QString text;
    Kind kind = Kind::Other;
};

// The outcome of a rule that can fail: a value, or a Failure. Asking for the value of a failed result is a
// programming error (std::bad_variant_access).
template <typename T>
class [[nodiscard]] Result {
public:
    Result(T value)
        : content_(std::move(value))
    {
    }
    Result(Failure failure)
        : content_(std::move(failure))
    {
    }

    explicit operator bool() const { return std::holds_alternative<T>(content_); }
    const T &operator*() const & { return std::get<T>(content_); }
    T &&operator*() && { return std::get<T>(std::move(content_)); }
    const T *operator->() const { return &std::get<T>(content_); }
    const Failure &failure() const { return std::get<Failure>(content_); }

private:
    std::variant<T, Failure> content_;
};

// The outcome of a rule that gives nothing back.
template <>
class [[nodiscard]] Result<void> {
public:
    Result() = default;
    Result(Failure failure)
        : failure_(std::move(failure))
        , ok_(false)
    {
    }

    explicit operator bool() const { return ok_; }
    const Failure &failure() const { return failure_; }

private:
    Failure failure_;
    bool ok_ = true;
};
