/// @file
/// The suite's object factory: an owning list of elements with reference counts and a scan cursor.
#pragma once

#include <cstdint>

#include "base/export.h"

/// An element of a TList.
class QXCMS_API TElement {
public:
    TElement() noexcept;
    virtual ~TElement();
    TElement(const TElement&) = delete;
    TElement& operator=(const TElement&) = delete;

    /// The element behind this one in its list, null at the end; owned by the list.
    TElement* GetNext() const noexcept { return next; }

private:
    friend class TList;

    TElement* next;
};

/// An owning list that keeps the order in which elements were appended.
class QXCMS_API TList {
public:
    TList() noexcept;
    /// Deletes every element, from the first on.
    virtual ~TList();
    TList(const TList&) = delete;
    TList& operator=(const TList&) = delete;

    /// Takes ownership of `element` and puts it at the end; null is ignored.
    void Append(TElement* element) noexcept;
    /// The first element, null when there is none; owned by the list.
    TElement* GetFirst() const noexcept { return first; }

private:
    TElement* first;
    TElement* last;
};

/// A list element that stands for one object and counts its users.
class QXCMS_API TObjEl : public TElement {
public:
    /// @param object the object this element stands for; whether it is owned is up to the derived class.
    explicit TObjEl(void* object) noexcept;
    ~TObjEl() override;

    void* GetObject() const noexcept { return object; }
    std::uint32_t GetReferences() const noexcept { return nrReferences; }
    void AddReference() noexcept { ++nrReferences; }

private:
    void* object;
    std::uint32_t nrReferences;
};

/// A registry of objects of one kind.
class QXCMS_API TObjFac {
public:
    TObjFac() noexcept;
    virtual ~TObjFac();
    TObjFac(const TObjFac&) = delete;
    TObjFac& operator=(const TObjFac&) = delete;

    /// Makes the element that will stand for `object`; null when it cannot be made.
    virtual TObjEl* TObjFacCreateEl(void* object) = 0;

    /// The number of registered objects.
    std::int32_t GetNrElements() const noexcept { return nrElements; }

protected:
    /// Makes the element for `object`, appends it, and counts the element and its first reference.
    /// @return the object, or null (nothing registered, the object not deleted) when no element could be
    /// made.
    void* Register(void* object);

    /// The next object in registration order, from the first one when `restart` is non-zero; null at the end.
    void* Scan(int restart) noexcept;

    /// The first element, for a walk that leaves the scan where it is; null when there is none.
    TElement* GetFirstElement() const noexcept { return elements.GetFirst(); }

private:
    TList elements;
    std::int32_t nrElements;
    TElement* cursor;
};
