#include "cgats/tcgatsfield.h"

#include <new>
#include <utility>

#include "base/owned_text.h"

TCgatsField::TCgatsField(int newDataType, const char* newName, int newNumber, int newKind, int newFieldId)
    : dataType(newDataType), number(newNumber), kind(newKind), fieldId(newFieldId), bad(0) {
    if (newName != nullptr)
        name = qxcms::detail::copyText(newName);
    if (!name || name[0] == '\0')
        bad = 1;
}

TCgatsField::~TCgatsField() = default;

std::unique_ptr<TCgatsField> TCgatsField::Copy() const {
    std::unique_ptr<TCgatsField> copy(new (std::nothrow)
                                          TCgatsField(dataType, name.get(), number, kind, fieldId));
    return copy && copy->bad == bad ? std::move(copy) : nullptr;
}
