// SPDX-License-Identifier: Apache-2.0
#pragma once

// Names of objects of the sample company.
namespace pelora::sample {

#define BASE "DC=linden-werke,DC=example"
#define COMPANY "OU=Linden-Werke Chemnitz," BASE

inline constexpr const char* kBase = BASE;
inline constexpr const char* kCompany = COMPANY;
inline constexpr const char* kSales = "OU=Vertrieb," COMPANY;
/// A slash in its name.
inline constexpr const char* kLaboratory = "OU=Labor I/O,OU=Entwicklung," COMPANY;

/// Has an account, two addresses and two delegates.
inline constexpr const char* kBirgit = "CN=Birgit Krämer,OU=Vertrieb," COMPANY;
/// Has an account; a comma in its name.
inline constexpr const char* kAnna = "CN=Meyer\\, Anna,OU=Geschäftsleitung," COMPANY;
/// Has the account attribute with 0; a slash in the name of its container.
inline constexpr const char* kRolf = "CN=Rolf Uhlig,OU=Labor I/O,OU=Entwicklung," COMPANY;
/// Has no account attribute, and is hidden in neither way.
inline constexpr const char* kUrsula = "CN=Ursula Fischer,OU=Fertigung," COMPANY;
/// Has imap and pop3 enabled.
inline constexpr const char* kHelga = "CN=Helga Önder,OU=IT," COMPANY;
/// Has imap enabled and pop3 disabled.
inline constexpr const char* kTom = "CN=Tom Richter,OU=IT," COMPANY;
/// Has imap enabled and two archive servers.
inline constexpr const char* kJuergen = "CN=Jürgen Weißflog,OU=Geschäftsleitung," COMPANY;
inline constexpr const char* kRoom = "CN=Saal Agricola,OU=Räume und Geräte," COMPANY;

inline constexpr const char* kContact = "CN=Dr. Renate Thiel,OU=Kontakte," COMPANY;
inline constexpr const char* kGroup = "CN=Vertrieb Alle,OU=Gruppen," COMPANY;
inline constexpr const char* kAddressList = "CN=Räume,OU=Adresslisten," COMPANY;
inline constexpr const char* kDynamicList = "CN=Alle in Chemnitz,OU=Adresslisten," COMPANY;
inline constexpr const char* kServer = "CN=mail01,OU=Groupware Servers," BASE;
inline constexpr const char* kSecondServer = "CN=mail02,OU=Groupware Servers," BASE;
/// Of a class that has no settings.
inline constexpr const char* kPlotter = "CN=Plotter Halle A,OU=Fertigung," COMPANY;

#undef COMPANY
#undef BASE

}  // namespace pelora::sample
