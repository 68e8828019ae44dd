#include <tessel/exceptions.h>

namespace tessel {
namespace {

constexpr wchar_t notUniqueText[] = L"An other object with the same values exists";

}  // namespace

Exception::~Exception() = default;

const wchar_t* WrongUnit::what() const { return L"Wrong unit"; }
const wchar_t* UnitConversionNotPossible::what() const { return L"Unit conversion not possible"; }
const wchar_t* InvalidUnitConversion::what() const { return L"Invalid unit conversion"; }
const wchar_t* DatabaseException::what() const { return L"Project database exception"; }
const wchar_t* ObjectNotFound::what() const { return L"Object not found"; }
const wchar_t* AlreadyInTransaction::what() const { return L"Transaction already in progress in this thread"; }
const wchar_t* Recoverable::what() const { return L"Recoverable exception"; }
const wchar_t* ForcedRollback::what() const { return L"Forced rollback"; }
const wchar_t* ObjectInUse::what() const { return L"Object is still referenced by other object"; }

ObjectNotUnique::ObjectNotUnique(const OdString& member)
    : member_(member), message_(std::wstring(notUniqueText) + L": " + member.toWide()) {}

const wchar_t* ObjectNotUnique::what() const { return message_.empty() ? notUniqueText : message_.c_str(); }

}  // namespace tessel
