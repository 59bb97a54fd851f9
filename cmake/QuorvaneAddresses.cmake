# The product's public addresses. They are in the reserved example domain until the owner sets them.
set(QUORVANE_WEBSITE "https://quorvane.example" CACHE STRING "The product's website")
set(QUORVANE_SUPPORT_MAIL "support@quorvane.example" CACHE STRING "Where people write for help")
set(QUORVANE_REVERSE_DNS "example.quorvane" CACHE STRING
  "The vendor's reverse-DNS prefix: of the application's ID and of the document type")

# Names derived from them: the application ID and the file types for the desktop.
set(QUORVANE_APPLICATION_ID "${QUORVANE_REVERSE_DNS}.Quorvane")
set(QUORVANE_DOCUMENT_TYPE "${QUORVANE_REVERSE_DNS}.quorvane.settings")
set(QUORVANE_MEDIA_TYPE "application/vnd.quorvane.settings+json")
string(REPLACE "/" "-" QUORVANE_MEDIA_ICON "${QUORVANE_MEDIA_TYPE}")
