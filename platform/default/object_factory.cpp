#include "platform/object_factory.h"

#include "base/guarded.h"

TElement::TElement() noexcept : next(nullptr) {}

TElement::~TElement() = default;

TList::TList() noexcept : first(nullptr), last(nullptr) {}

TList::~TList() {
    while (first != nullptr) {
        TElement* const element = first;
        first = element->next;
        delete element;
    }
}

void TList::Append(TElement* element) noexcept {
    if (element == nullptr)
        return;
    if (last == nullptr)
        first = element;
    else
        last->next = element;
    last = element;
}

TObjEl::TObjEl(void* theObject) noexcept : object(theObject), nrReferences(0) {}

TObjEl::~TObjEl() = default;

TObjFac::TObjFac() noexcept : nrElements(0), cursor(nullptr) {}

TObjFac::~TObjFac() = default;

void* TObjFac::Register(void* object) {
    TObjEl* const element =
        qxcms::detail::guarded(static_cast<TObjEl*>(nullptr), [&] { return TObjFacCreateEl(object); });
    if (element == nullptr)
        return nullptr;
    elements.Append(element);
    ++nrElements;
    element->AddReference();
    return object;
}

// The cursor stands on the element that was handed out last, null before the first one.
void* TObjFac::Scan(int restart) noexcept {
    TElement* const following = restart != 0 || cursor == nullptr ? elements.GetFirst() : cursor->GetNext();
    if (following == nullptr)
        return nullptr;
    cursor = following;
    return static_cast<TObjEl*>(following)->GetObject();
}
