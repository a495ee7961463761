/// @file
/// The values of one column of a CGATS table.
#pragma once

#include <cstdint>
#include <memory>

#include "base/export.h"

namespace qxcms::detail {
struct LayoutProbe;
}

/// The entries of one column. Callers stay within the count; memory grows with the entries that are set.
class QXCMS_API TCgatsValueList {
public:
    TCgatsValueList(const TCgatsValueList&) = delete;
    TCgatsValueList& operator=(const TCgatsValueList&) = delete;
    virtual ~TCgatsValueList();

    /// The answer of SetValue when nothing was stored.
    static constexpr std::intptr_t kNotStored = INTPTR_MIN;

    /// Stores the value that `text` stands for.
    /// @return the index for a list of doubles, the number for one of integers, the address of the copy for
    /// one of strings; kNotStored for null, a bad index or no memory.
    virtual std::intptr_t SetValue(int index, const char* text) = 0;
    /// The entry as an integer: truncated toward zero (clamped to int, 0 for an undefined number); 0 for a
    /// string.
    virtual std::int32_t GetInt(int index) const = 0;
    /// The entry as a floating-point number; 0.0 for a string.
    virtual double GetDouble(int index) const = 0;
    /// The string, owned by the list until it goes; null when absent and for numbers.
    virtual const char* GetString(int index) const = 0;

    /// The number of entries.
    std::int32_t GetNumber() const { return count; }

protected:
    explicit TCgatsValueList(int count);

    /// True for an index within the count.
    bool holds(int index) const;
    /// How many entries an array of `capacity` must grow to so that `index` fits; at most the count.
    int grownCapacity(int index, int capacity) const;

private:
    friend struct qxcms::detail::LayoutProbe;

    std::int32_t count;
};

/// A column of floating-point numbers, all 0.0 at first.
class QXCMS_API TCgatsValueListDouble : public TCgatsValueList {
public:
    explicit TCgatsValueListDouble(int count);
    ~TCgatsValueListDouble() override;

    /// Makes room for so many entries at once, at most the count.
    /// @return the entries, valid until the list grows further; null when there is no memory.
    double* Reserve(int number);
    /// The first `number` entries; null when some of them were never set.
    const double* GetNumbers(int number) const { return number <= capacity ? entries.get() : nullptr; }
    /// @return false for a bad index or no memory.
    bool SetNumber(int index, double number);

    std::intptr_t SetValue(int index, const char* text) override;
    std::int32_t GetInt(int index) const override;
    double GetDouble(int index) const override;
    const char* GetString(int index) const override;

private:
    friend struct qxcms::detail::LayoutProbe;

    std::int32_t capacity;
    std::unique_ptr<double[]> entries;
};

/// A column of integers, all 0 at first.
class QXCMS_API TCgatsValueListInt : public TCgatsValueList {
public:
    explicit TCgatsValueListInt(int count);
    ~TCgatsValueListInt() override;

    /// @return false for a bad index or no memory.
    bool SetNumber(int index, int number);

    std::intptr_t SetValue(int index, const char* text) override;
    std::int32_t GetInt(int index) const override;
    double GetDouble(int index) const override;
    const char* GetString(int index) const override;

private:
    friend struct qxcms::detail::LayoutProbe;

    std::int32_t capacity;
    std::unique_ptr<std::int32_t[]> entries;
};

/// A column of strings, all absent at first. A string that is replaced stays valid until the list goes.
class QXCMS_API TCgatsValueListString : public TCgatsValueList {
public:
    explicit TCgatsValueListString(int count);
    ~TCgatsValueListString() override;

    std::intptr_t SetValue(int index, const char* text) override;
    std::int32_t GetInt(int index) const override;
    double GetDouble(int index) const override;
    const char* GetString(int index) const override;

private:
    friend struct qxcms::detail::LayoutProbe;

    struct Node;

    std::int32_t capacity;
    std::unique_ptr<Node*[]> entries;
};
