# The addresses that the product is known by. They stay in the reserved example domain until the
# owner sets them.
set(QUORVANE_WEBSITE "https://quorvane.example" CACHE STRING "The product's website")
set(QUORVANE_SUPPORT_MAIL "support@quorvane.example" CACHE STRING "Where people write for help")
set(QUORVANE_REVERSE_DNS "example.quorvane" CACHE STRING
  "The vendor's reverse-DNS prefix: of the application's ID and of the document type")
