// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "hosts/windows/system_headers.h"

namespace pelora::windows::test {

/// A directory object of the system's interfaces on which nothing works: a derived class implements
/// what it needs of `IADs`, and leaves the rest.
class UnimplementedAds : public ::IADsUser, public ::IADsOU, public ::IADsContainer {
 public:
// One line for each operation of the interfaces, in their order.
#define PELORA_UNIMPLEMENTED(operation, ...) \
  STDMETHODIMP operation(__VA_ARGS__) override { return E_NOTIMPL; }

  // IADs
  PELORA_UNIMPLEMENTED(get_Name, BSTR*)
  PELORA_UNIMPLEMENTED(get_Class, BSTR*)
  PELORA_UNIMPLEMENTED(get_GUID, BSTR*)
  PELORA_UNIMPLEMENTED(get_ADsPath, BSTR*)
  PELORA_UNIMPLEMENTED(get_Parent, BSTR*)
  PELORA_UNIMPLEMENTED(get_Schema, BSTR*)
  PELORA_UNIMPLEMENTED(GetInfo)
  PELORA_UNIMPLEMENTED(GetEx, BSTR, VARIANT*)
  PELORA_UNIMPLEMENTED(GetInfoEx, VARIANT, long)

  // IADsUser
  PELORA_UNIMPLEMENTED(get_BadLoginAddress, BSTR*)
  PELORA_UNIMPLEMENTED(get_BadLoginCount, long*)
  PELORA_UNIMPLEMENTED(get_LastLogin, DATE*)
  PELORA_UNIMPLEMENTED(get_LastLogoff, DATE*)
  PELORA_UNIMPLEMENTED(get_LastFailedLogin, DATE*)
  PELORA_UNIMPLEMENTED(get_PasswordLastChanged, DATE*)
  PELORA_UNIMPLEMENTED(get_Description, BSTR*)
  PELORA_UNIMPLEMENTED(put_Description, BSTR)
  PELORA_UNIMPLEMENTED(get_Division, BSTR*)
  PELORA_UNIMPLEMENTED(put_Division, BSTR)
  PELORA_UNIMPLEMENTED(get_Department, BSTR*)
  PELORA_UNIMPLEMENTED(put_Department, BSTR)
  PELORA_UNIMPLEMENTED(get_EmployeeID, BSTR*)
  PELORA_UNIMPLEMENTED(put_EmployeeID, BSTR)
  PELORA_UNIMPLEMENTED(get_FullName, BSTR*)
  PELORA_UNIMPLEMENTED(put_FullName, BSTR)
  PELORA_UNIMPLEMENTED(get_FirstName, BSTR*)
  PELORA_UNIMPLEMENTED(put_FirstName, BSTR)
  PELORA_UNIMPLEMENTED(get_LastName, BSTR*)
  PELORA_UNIMPLEMENTED(put_LastName, BSTR)
  PELORA_UNIMPLEMENTED(get_OtherName, BSTR*)
  PELORA_UNIMPLEMENTED(put_OtherName, BSTR)
  PELORA_UNIMPLEMENTED(get_NamePrefix, BSTR*)
  PELORA_UNIMPLEMENTED(put_NamePrefix, BSTR)
  PELORA_UNIMPLEMENTED(get_NameSuffix, BSTR*)
  PELORA_UNIMPLEMENTED(put_NameSuffix, BSTR)
  PELORA_UNIMPLEMENTED(get_Title, BSTR*)
  PELORA_UNIMPLEMENTED(put_Title, BSTR)
  PELORA_UNIMPLEMENTED(get_Manager, BSTR*)
  PELORA_UNIMPLEMENTED(put_Manager, BSTR)
  PELORA_UNIMPLEMENTED(get_TelephoneHome, VARIANT*)
  PELORA_UNIMPLEMENTED(put_TelephoneHome, VARIANT)
  PELORA_UNIMPLEMENTED(get_TelephoneMobile, VARIANT*)
  PELORA_UNIMPLEMENTED(put_TelephoneMobile, VARIANT)
  PELORA_UNIMPLEMENTED(get_TelephoneNumber, VARIANT*)
  PELORA_UNIMPLEMENTED(put_TelephoneNumber, VARIANT)
  PELORA_UNIMPLEMENTED(get_TelephonePager, VARIANT*)
  PELORA_UNIMPLEMENTED(put_TelephonePager, VARIANT)
  PELORA_UNIMPLEMENTED(get_FaxNumber, VARIANT*)
  PELORA_UNIMPLEMENTED(put_FaxNumber, VARIANT)
  PELORA_UNIMPLEMENTED(get_OfficeLocations, VARIANT*)
  PELORA_UNIMPLEMENTED(put_OfficeLocations, VARIANT)
  PELORA_UNIMPLEMENTED(get_PostalAddresses, VARIANT*)
  PELORA_UNIMPLEMENTED(put_PostalAddresses, VARIANT)
  PELORA_UNIMPLEMENTED(get_PostalCodes, VARIANT*)
  PELORA_UNIMPLEMENTED(put_PostalCodes, VARIANT)
  PELORA_UNIMPLEMENTED(get_SeeAlso, VARIANT*)
  PELORA_UNIMPLEMENTED(put_SeeAlso, VARIANT)
  PELORA_UNIMPLEMENTED(get_AccountDisabled, VARIANT_BOOL*)
  PELORA_UNIMPLEMENTED(put_AccountDisabled, VARIANT_BOOL)
  PELORA_UNIMPLEMENTED(get_AccountExpirationDate, DATE*)
  PELORA_UNIMPLEMENTED(put_AccountExpirationDate, DATE)
  PELORA_UNIMPLEMENTED(get_GraceLoginsAllowed, long*)
  PELORA_UNIMPLEMENTED(put_GraceLoginsAllowed, long)
  PELORA_UNIMPLEMENTED(get_GraceLoginsRemaining, long*)
  PELORA_UNIMPLEMENTED(put_GraceLoginsRemaining, long)
  PELORA_UNIMPLEMENTED(get_IsAccountLocked, VARIANT_BOOL*)
  PELORA_UNIMPLEMENTED(put_IsAccountLocked, VARIANT_BOOL)
  PELORA_UNIMPLEMENTED(get_LoginHours, VARIANT*)
  PELORA_UNIMPLEMENTED(put_LoginHours, VARIANT)
  PELORA_UNIMPLEMENTED(get_LoginWorkstations, VARIANT*)
  PELORA_UNIMPLEMENTED(put_LoginWorkstations, VARIANT)
  PELORA_UNIMPLEMENTED(get_MaxLogins, long*)
  PELORA_UNIMPLEMENTED(put_MaxLogins, long)
  PELORA_UNIMPLEMENTED(get_MaxStorage, long*)
  PELORA_UNIMPLEMENTED(put_MaxStorage, long)
  PELORA_UNIMPLEMENTED(get_PasswordExpirationDate, DATE*)
  PELORA_UNIMPLEMENTED(put_PasswordExpirationDate, DATE)
  PELORA_UNIMPLEMENTED(get_PasswordMinimumLength, long*)
  PELORA_UNIMPLEMENTED(put_PasswordMinimumLength, long)
  PELORA_UNIMPLEMENTED(get_PasswordRequired, VARIANT_BOOL*)
  PELORA_UNIMPLEMENTED(put_PasswordRequired, VARIANT_BOOL)
  PELORA_UNIMPLEMENTED(get_RequireUniquePassword, VARIANT_BOOL*)
  PELORA_UNIMPLEMENTED(put_RequireUniquePassword, VARIANT_BOOL)
  PELORA_UNIMPLEMENTED(get_EmailAddress, BSTR*)
  PELORA_UNIMPLEMENTED(put_EmailAddress, BSTR)
  PELORA_UNIMPLEMENTED(get_HomeDirectory, BSTR*)
  PELORA_UNIMPLEMENTED(put_HomeDirectory, BSTR)
  PELORA_UNIMPLEMENTED(get_Languages, VARIANT*)
  PELORA_UNIMPLEMENTED(put_Languages, VARIANT)
  PELORA_UNIMPLEMENTED(get_Profile, BSTR*)
  PELORA_UNIMPLEMENTED(put_Profile, BSTR)
  PELORA_UNIMPLEMENTED(get_LoginScript, BSTR*)
  PELORA_UNIMPLEMENTED(put_LoginScript, BSTR)
  PELORA_UNIMPLEMENTED(get_Picture, VARIANT*)
  PELORA_UNIMPLEMENTED(put_Picture, VARIANT)
  PELORA_UNIMPLEMENTED(get_HomePage, BSTR*)
  PELORA_UNIMPLEMENTED(put_HomePage, BSTR)
  PELORA_UNIMPLEMENTED(Groups, IADsMembers**)
  PELORA_UNIMPLEMENTED(SetPassword, BSTR)
  PELORA_UNIMPLEMENTED(ChangePassword, BSTR, BSTR)

  // IADsOU
  PELORA_UNIMPLEMENTED(get_LocalityName, BSTR*)
  PELORA_UNIMPLEMENTED(put_LocalityName, BSTR)
  PELORA_UNIMPLEMENTED(get_PostalAddress, BSTR*)
  PELORA_UNIMPLEMENTED(put_PostalAddress, BSTR)
  PELORA_UNIMPLEMENTED(get_TelephoneNumber, BSTR*)
  PELORA_UNIMPLEMENTED(put_TelephoneNumber, BSTR)
  PELORA_UNIMPLEMENTED(get_FaxNumber, BSTR*)
  PELORA_UNIMPLEMENTED(put_FaxNumber, BSTR)
  PELORA_UNIMPLEMENTED(get_BusinessCategory, BSTR*)
  PELORA_UNIMPLEMENTED(put_BusinessCategory, BSTR)

  // IADsContainer
  PELORA_UNIMPLEMENTED(get_Count, long*)
  PELORA_UNIMPLEMENTED(get__NewEnum, ::IUnknown**)
  PELORA_UNIMPLEMENTED(get_Filter, VARIANT*)
  PELORA_UNIMPLEMENTED(put_Filter, VARIANT)
  PELORA_UNIMPLEMENTED(get_Hints, VARIANT*)
  PELORA_UNIMPLEMENTED(put_Hints, VARIANT)
  PELORA_UNIMPLEMENTED(GetObject, BSTR, BSTR, IDispatch**)
  PELORA_UNIMPLEMENTED(Create, BSTR, BSTR, IDispatch**)
  PELORA_UNIMPLEMENTED(Delete, BSTR, BSTR)
  PELORA_UNIMPLEMENTED(CopyHere, BSTR, BSTR, IDispatch**)
  PELORA_UNIMPLEMENTED(MoveHere, BSTR, BSTR, IDispatch**)

  // IDispatch
  PELORA_UNIMPLEMENTED(GetTypeInfoCount, UINT*)
  PELORA_UNIMPLEMENTED(GetTypeInfo, UINT, LCID, ITypeInfo**)
  PELORA_UNIMPLEMENTED(GetIDsOfNames, REFIID, LPOLESTR*, UINT, LCID, DISPID*)
  PELORA_UNIMPLEMENTED(Invoke, DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*)
#undef PELORA_UNIMPLEMENTED

 protected:
  ~UnimplementedAds() = default;
};

}  // namespace pelora::windows::test
