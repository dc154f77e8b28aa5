// SPDX-License-Identifier: Apache-2.0
#pragma once

/// Status codes of the component object model: 32 bits, negative is a failure, zero and above
/// success.
///
/// On Windows they are the system's own, so that adapters need no translation; elsewhere they are
/// defined here with the same names and numbers. This is the one header under `src` that may look
/// at the system it is compiled for.

#if defined(_WIN32)

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <adserr.h>
#include <windows.h>

namespace pelora {
using HRESULT = ::HRESULT;
}

#else

#include <cstdint>

namespace pelora {

using HRESULT = std::int32_t;

/// The code whose 32 bits are `bits`.
constexpr HRESULT HresultOfBits(std::uint32_t bits) { return static_cast<HRESULT>(bits); }

inline constexpr HRESULT S_OK = 0;
inline constexpr HRESULT S_FALSE = 1;
inline constexpr HRESULT E_NOTIMPL = HresultOfBits(0x80004001U);
inline constexpr HRESULT E_NOINTERFACE = HresultOfBits(0x80004002U);
inline constexpr HRESULT E_POINTER = HresultOfBits(0x80004003U);
inline constexpr HRESULT E_FAIL = HresultOfBits(0x80004005U);
inline constexpr HRESULT E_UNEXPECTED = HresultOfBits(0x8000FFFFU);
inline constexpr HRESULT E_ACCESSDENIED = HresultOfBits(0x80070005U);
inline constexpr HRESULT E_OUTOFMEMORY = HresultOfBits(0x8007000EU);
inline constexpr HRESULT E_INVALIDARG = HresultOfBits(0x80070057U);
inline constexpr HRESULT DV_E_FORMATETC = HresultOfBits(0x80040064U);
inline constexpr HRESULT CLASS_E_NOAGGREGATION = HresultOfBits(0x80040110U);
inline constexpr HRESULT CLASS_E_CLASSNOTAVAILABLE = HresultOfBits(0x80040111U);

inline constexpr HRESULT E_ADS_BAD_PATHNAME = HresultOfBits(0x80005000U);
inline constexpr HRESULT E_ADS_BAD_PARAMETER = HresultOfBits(0x80005008U);
inline constexpr HRESULT E_ADS_OBJECT_UNBOUND = HresultOfBits(0x80005009U);
inline constexpr HRESULT E_ADS_CANT_CONVERT_DATATYPE = HresultOfBits(0x8000500CU);
inline constexpr HRESULT E_ADS_PROPERTY_NOT_FOUND = HresultOfBits(0x8000500DU);
inline constexpr HRESULT E_ADS_OBJECT_EXISTS = HresultOfBits(0x8000500EU);
/// A success code all the same: something was left out, and the caller decides what that means.
inline constexpr HRESULT S_ADS_ERRORSOCCURRED = 0x00005011;

constexpr bool SUCCEEDED(HRESULT status) { return status >= 0; }
constexpr bool FAILED(HRESULT status) { return status < 0; }

}  // namespace pelora

#endif

namespace pelora {

/// The directory knows no object of the given name ("no such object").
inline constexpr auto kNoSuchObject = static_cast<HRESULT>(0x80072030U);
/// An object of this name exists already.
inline constexpr auto kObjectAlreadyExists = static_cast<HRESULT>(0x80071392U);

}  // namespace pelora
