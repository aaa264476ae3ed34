# US-ASCII: ASCII under the id and the name that the library's built-in object has, so that a locale
# without data files and one with them find the same page.
# origin: ours
# licence: as the project

id = 1
name = US-ASCII
based on = ASCII
