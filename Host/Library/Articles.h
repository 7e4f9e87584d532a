#pragma once

#include <string>
#include <string_view>

namespace helmo {

/** `text` without the article at its start ("The Wall" → "Wall", "L'Aventura" → "Aventura"), as lists are
   sorted. English articles and those of other languages that mean nothing else at the start of a name always
   go; a word that is an article in one language and a plain word in another ("Die Another Day", "I Will
   Survive") only when `language` ("de", "pt-BR") is that language. Never strips to nothing. */
std::string withoutArticle(std::string_view text, std::string_view language);

/** Whether `text` begins with a word that is an article in any language. */
bool mayBeginWithArticle(std::string_view text);

}  // namespace helmo
