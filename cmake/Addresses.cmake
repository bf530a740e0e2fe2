# The addresses of the deployed service. A deployment overrides them at configure time, for example with
# -DKORVAN_API_URL=https://api.vpn.example/api; the program reads them from base/Addresses.h.
set(KORVAN_API_URL "https://api.korvan.example/api" CACHE STRING "Account API to which the login is posted")
set(KORVAN_UPDATE_URL "https://portal.korvan.example/update.xml" CACHE STRING "Update description")
set(KORVAN_PORTAL_URL "https://portal.korvan.example/subscription" CACHE STRING "Subscription portal page")
set(KORVAN_HELPDESK_URL "https://help.korvan.example" CACHE STRING "Help-desk service, without a trailing slash")
set(KORVAN_SITE_URL "http://www.korvan.example" CACHE STRING "Web site, without a trailing slash")
set(KORVAN_IP_TEST_URL "http://ip.korvan.example/testip.php" CACHE STRING "IP test page")
set(KORVAN_SUPPORT_EMAIL "support@korvan.example" CACHE STRING "Support e-mail address")
set(KORVAN_SERVICE_PINS "" CACHE STRING
    "SHA-256 of the service's public keys, in hexadecimal, with blanks between them; without any, TLS errors are ignored")
set(KORVAN_UPDATE_KEYS "" CACHE STRING
    "Public keys of updates, minisign's lines (RW...), with blanks between them; without any, updates are not signed")
