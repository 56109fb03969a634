# SPDX-License-Identifier: Apache-2.0
# Prints "RULE:FILE:LINE: TEXT" for each breach of the dialect in C++ files.
function says(rule, line, text) { print rule ":" FILENAME ":" line ": " text }
function balanced(text,   copy) { copy = text; return gsub(/\(/, "", copy) == gsub(/\)/, "", text) }
FNR == 1 { before = ""; last = ""; comment = 0; type = 0; isPublic = FILENAME ~ /(^|\/)include\// }
{
  # A body below its control statement without braces; a body in braces that fits beside it. (The macros of GoogleTest
  # hold an else, and compilers warn of them without braces.)
  if ((last ~ /^ *(} )?(else )?(if|for|while) .*\)$/ && balanced(last) || last ~ /^ *(} )?else$/) && $0 !~ /^ *\{/)
    says("braces", FNR - 1, last)
  indent = before; sub(/[^ ].*/, "", indent)
  body = last; sub(/^ */, "", body)
  if (before ~ /^ *(if|for|while) .*\) \{$/ && balanced(before) && before !~ /\/\// && $0 == indent "}" && body ~ /;$/ &&
      body !~ /^(if|for|while|EXPECT_|ASSERT_|\/\/)/ && length(before) - 1 + length(body) <= 120)
    says("braces", FNR - 2, before)

  name = $0
  if (!isPublic && name ~ /^ *(static |inline )*constexpr [^=({]*[ *&][A-Za-z_][A-Za-z0-9_]*(\[[^]]*\])* *[={;]/) {
    sub(/(\[[^]]*\])* *[={;].*/, "", name); sub(/.*[ *&]/, "", name)
    if (name !~ /^k[A-Z0-9]/) says("constant", FNR, $0)
  }

  # In public headers a heading may stand alone; what documents a declaration begins with ///, and each type has such.
  if (isPublic) {
    if (comment && NF > 0 && $0 !~ /^ *\/\//) says("public", comment, $0)
    comment = $0 ~ /^ *\/\/([^\/]|$)/ && $0 !~ /SPDX|\/\/ ----|clang-format/ ? FNR : 0
    if ($0 ~ /^(class|struct|enum class|typedef struct) [^;]*$/ && last !~ /^(\/\/\/|template|requires)/) says("public", FNR, $0)
  }
  before = last; last = $0
}
