# Joins sources into groups to be analysed at once, as most of an analysis is the headers that they share:
#   awk -f scripts/tidyGroups.awk -v root="$PWD" -v folder=FOLDER -v size=N COMPILE_COMMANDS HEADERS... SOURCES
# SOURCES lists paths under root, one a line. FOLDER receives <n>.cpp (the sources one after another), <n>.sources (their
# paths) and a compile_commands.json. A source without compile command is left out.
#
# A group holds sources with the same options in which no name that one declares for itself (in an unnamed namespace, by
# `using`, `static` or `const`) is a word of another, or for a function a word before a bracket: so none sees, uses or hides
# what another one declares. An alias that both declare in the same words does no harm.
# A source stands alone that has preprocessor lines other than #include, which would reach into the next, or a type
# with the name of one in a header of the library, which would be ambiguous to a header included after it.

FNR == 1 { file++ }

FILENAME ~ /\.h$/ {
  if (/^(struct|class|enum) /) declare($0)
  next
}

file == 1 && /^ *"command":/ {
  command = $0
  sub(/ -o [^ ]* -c .*/, "", command)
  next
}
file == 1 && /^ *"file":/ {
  path = $0
  sub(/^ *"file": "/, "", path)
  sub(/".*/, "", path)
  if (index(path, root "/") == 1) commands[substr(path, length(root) + 2)] = command
  next
}
file == 1 { next }

!headersRead {
  for (name in own) typeOfHeader[name] = 1
  headersRead = 1
}

$0 in commands {
  readSource($0)
  for (group = 1; group <= groups && !fits(group, $0); group++) continue
  if (group > groups) {
    groups = group
    options[group] = commands[$0]
    dear[group] = isDear($0)
  }
  add(group, $0)
}

END {
  database = folder "/compile_commands.json"
  for (group = 1; group <= groups; group++) {
    name = folder "/" group ".cpp"
    printf "%s{\n\"directory\": \"%s\",\n%s -c %s\",\n\"file\": \"%s\"\n}", (group == 1 ? "[" : ",\n"), folder,
           options[group], name, name > database
  }
  print (groups ? "]" : "[]") > database
}

# The commands' headers are the dearest; no other source shall pay for them.
function isDear(path) { return path ~ /^src\/cli\// }

function fits(group, path,    word) {
  if (alone || closed[group] || members[group] >= size) return 0
  if (options[group] != commands[path] || dear[group] != isDear(path)) return 0
  for (word in own) {
    if ((group, word) in ownOf && ownOf[group, word] == own[word] && own[word] ~ /^using .* = /) continue
    if ((group, word) in ownOf || (group, own[word] == "function" ? word "(" : word) in wordsOf) return 0
  }
  for (word in words)
    if ((group, word) in ownOf && !(word in own) && (ownOf[group, word] != "function" || (word "(") in words)) return 0
  return 1
}

function add(group, path,    word) {
  members[group]++
  closed[group] = alone
  for (word in own) ownOf[group, word] = own[word]
  for (word in words) wordsOf[group, word] = 1
  printf "%s", text > (folder "/" group ".cpp")
  print path > (folder "/" group ".sources")
}

# Sets text, words, own and alone.
function readSource(path,    line, name, unnamed) {
  split("", own)
  split("", words)
  text = ""
  alone = unnamed = 0
  while ((getline line < (root "/" path)) > 0) {
    text = text line "\n"
    if (line ~ /^ *#/) {
      if (line !~ /^#include /) alone = 1
      continue
    }
    addWords(words, freeWords(line))
    if (line == "namespace {") unnamed = 1
    else if (line == "}  // namespace") unnamed = 0
    else if (line ~ /^[A-Za-z]/ && (unnamed || line ~ /^(static|using|inline|const|constexpr|extern|enum) |^namespace [^ ]+ = /))
      declare(line)
  }
  close(root "/" path)
  for (name in own)
    if (own[name] ~ /^(struct|class|enum) / && name in typeOfHeader) alone = 1
}

# The line without comment, text and members, which name nothing that another source declares.
function freeWords(line) {
  gsub(/'(\\.|[^'\\])'/, "0", line)
  gsub(/"([^"\\]|\\.)*"/, "\"", line)
  sub(/ *\/\/.*/, "", line)
  gsub(/(\.|->)[A-Za-z_][A-Za-z_0-9]*/, ".", line)
  return line
}

# A word before a bracket is one of its own too: with the bracket.
function addWords(set, line,    count, part, i) {
  gsub(/\(/, "( ", line)
  count = split(line, part, /[^A-Za-z_0-9(]+/)
  for (i = 1; i <= count; i++) {
    set[part[i]] = 1
    sub(/\(/, "", part[i])
    set[part[i]] = 1
  }
  delete set[""]
  delete set["("]
}

# A line at the margin declares the word before its first bracket, "=" or ";"; an unscoped enumeration each of its words.
function declare(line,    kind) {
  if (line ~ /^template / || line ~ / operator[^A-Za-z_0-9]/) return
  if (line ~ /^enum / && line !~ /^enum (class|struct) /) {
    addWords(own, line)
    if (line !~ /}/) alone = 1
    return
  }
  kind = line
  if (line ~ /^[^(]* = /) sub(/ = .*/, "", line)
  else if (line ~ /^[^\[{;=]*\(/) kind = "function"
  if (line ~ /^(struct|class|union|enum) /) sub(/ (final|:).*/, "", line)
  sub(/ *[(\[{;].*/, "", line)
  if (match(line, /[A-Za-z_0-9]+$/)) own[substr(line, RSTART)] = kind
}
