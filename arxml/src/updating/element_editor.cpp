#include "updating/element_editor.h"

#include "source/white_space.h"
#include "writing/element_order.h"

#include <algorithm>
#include <map>
#include <optional>
#include <velum_arxml/notation/number.h>

namespace velum::arxml {

namespace {

/// A number in one form, whatever its notation.
std::string numberKey(std::string_view text) {
    const RealNumber number = readRealNumber(text);
    return number.value ? numberText(*number.value) : std::string(text);
}

/// What tells an element from others of its name in the same list.
std::string keyOf(SourceNode const& node) {
    std::string key(node.name);
    for (char const* const name : {"SHORT-NAME", "SHORT-LABEL", "SW-AXIS-INDEX"}) {
        if (SourceNode const* const child = node.child(name)) {
            return key + '/' + child->text;
        }
    }
    if (node.name == "COMPU-SCALE") {
        return key + (node.child("COMPU-CONST") != nullptr
                          ? '/' + numberKey(node.childText("LOWER-LIMIT"))
                          : std::string());
    }
    return key;
}

/// The keys of all children; equal ones are numbered.
std::vector<std::string> keysOf(SourceNode const& node) {
    std::map<std::string, int> counts;
    std::vector<std::string> keys;
    for (SourceNode const& child : node.children) {
        std::string key = keyOf(child);
        const int number = ++counts[key];
        keys.push_back(number == 1 ? key : key + '#' + std::to_string(number));
    }
    return keys;
}

SourceNode const* childAt(SourceNode const& node, std::string const& key) {
    const std::vector<std::string> keys = keysOf(node);
    const auto found = std::find(keys.begin(), keys.end(), key);
    return found == keys.end() ? nullptr
                               : &node.children[static_cast<std::size_t>(found - keys.begin())];
}

/// The only child of a name; null if there is none or several.
SourceNode const* onlyChild(SourceNode const& node, std::string_view name) {
    SourceNode const* found = nullptr;
    for (SourceNode const& child : node.children) {
        if (child.name == name) {
            if (found != nullptr) {
                return nullptr;
            }
            found = &child;
        }
    }
    return found;
}

std::string_view of(std::string_view text, SourceNode const& node) {
    return text.substr(node.begin, node.end - node.begin);
}

/// Which child after a change each one before it has become. Those without a partner of their key
/// pair with the next one of their name that has none either: they were renamed.
std::vector<std::optional<std::size_t>> pairs(SourceNode const& before, SourceNode const& after) {
    const std::vector<std::string> old = keysOf(before);
    const std::vector<std::string> now = keysOf(after);
    std::vector<std::optional<std::size_t>> partner(old.size());
    std::vector<bool> isTaken(now.size());
    for (std::size_t i = 0; i < old.size(); ++i) {
        const auto found = std::find(now.begin(), now.end(), old[i]);
        if (found != now.end()) {
            partner[i] = static_cast<std::size_t>(found - now.begin());
            isTaken[*partner[i]] = true;
        }
    }
    if (old.size() != now.size()) {
        return partner;
    }
    for (std::size_t i = 0; i < old.size(); ++i) {
        if (!partner[i] && !isTaken[i] && before.children[i].name == after.children[i].name) {
            partner[i] = i;
            isTaken[i] = true;
        }
    }
    return partner;
}

/// Whether there is text beside elements.
bool isMixed(SourceNode const& node) {
    return !node.text.empty() && !node.children.empty();
}

std::string_view contentOf(std::string_view text, SourceNode const& node) {
    return withoutOuterSpace(text.substr(node.content, node.contentEnd - node.content));
}

/// As the first line ends.
std::string_view lineEndIn(std::string_view text) {
    const std::size_t end = text.find('\n');
    return end != std::string_view::npos && end > 0 && text[end - 1] == '\r' ? "\r\n" : "\n";
}

} // namespace

ElementEditor::ElementEditor(std::string_view file, Absent absent)
    : file_(file), absent_(absent), lineEnd_(lineEndIn(file)) {
}

void ElementEditor::change(std::string_view before,
                           std::string_view after,
                           SourceNode const& source) {
    const SourceNode beforeNode = SourceText(before).nodeAt(0);
    const SourceNode afterNode = SourceText(after).nodeAt(0);
    changeNode({before, beforeNode}, {after, afterNode}, source);
}

void ElementEditor::changeNode(Side const& before, Side const& after, SourceNode const& source) {
    if (of(before.text, before.node) == of(after.text, after.node)) {
        return;
    }
    changeTag(before.text.substr(before.node.begin, before.node.content - before.node.begin),
              after.text.substr(after.node.begin, after.node.content - after.node.begin),
              source);
    if (before.node.children.empty() && after.node.children.empty()) {
        changeText(before.node.text, after.node.text, source);
    } else if (isMixed(before.node) || isMixed(after.node)) {
        changeMixed(before, after, source);
    } else {
        changeChildren(before, after, source);
    }
}

/// Text with elements in it, as in the name of a unit, changes as a whole.
void ElementEditor::changeMixed(Side const& before, Side const& after, SourceNode const& source) {
    if (source.isEmptyTag() || contentOf(file_, source) != contentOf(before.text, before.node)) {
        missing_.push_back("<" + std::string(source.name) + "> is written in another way");
        return;
    }
    edits_.push_back(
        {source.content, source.contentEnd, std::string(contentOf(after.text, after.node))});
}

void ElementEditor::changeText(std::string const& before,
                               std::string const& after,
                               SourceNode const& source) {
    if (before == after) {
        return;
    }
    if (!source.children.empty()) {
        missing_.push_back("<" + std::string(source.name) + "> has elements in it");
        return;
    }
    if (source.isEmptyTag()) {
        missing_.push_back("<" + std::string(source.name) + "/> is written without content");
        return;
    }
    std::size_t begin = source.content;
    std::size_t end = source.contentEnd;
    while (begin < end && isWhiteSpace(file_[begin])) {
        ++begin;
    }
    while (end > begin && isWhiteSpace(file_[end - 1])) {
        --end;
    }
    edits_.push_back({begin, end, escaped(after)});
}

/// The one attribute that changes: INTERVAL-TYPE of a limit, DEST of a reference.
void ElementEditor::changeTag(std::string_view before,
                              std::string_view after,
                              SourceNode const& source) {
    if (before == after) {
        return;
    }
    const auto attribute = [](std::string_view tag) {
        const std::size_t name = tag.find(' ');
        const std::size_t quote = tag.find('"');
        return name == std::string_view::npos || quote == std::string_view::npos
                   ? std::pair(std::string_view(), std::string_view())
                   : std::pair(tag.substr(name + 1, quote - name - 2),
                               tag.substr(quote + 1, tag.rfind('"') - quote - 1));
    };
    const auto [name, value] = attribute(after);
    const std::string_view tag = file_.substr(source.begin, source.content - source.begin);
    const std::size_t place = tag.find(name);
    if (name.empty()) {
        missing_.push_back("<" + std::string(source.name) + "> has another attribute");
    } else if (place == std::string_view::npos) {
        edits_.push_back({source.begin + 1 + source.name.size(),
                          source.begin + 1 + source.name.size(),
                          ' ' + std::string(name) + "=\"" + escaped(value) + '"'});
    } else {
        const std::size_t quote = tag.find_first_of("\"'", place);
        const std::size_t end = tag.find(tag[quote], quote + 1);
        edits_.push_back({source.begin + quote + 1, source.begin + end, escaped(value)});
    }
}

/// What of a file stands for a child as a writer writes it. The only one of its name may have
/// another name than the writer makes up, and limits may be written as internal ones where the
/// writer takes physical ones.
SourceNode const* ElementEditor::counterpartOf(SourceNode const& before,
                                               std::string const& key,
                                               SourceNode const& source) const {
    if (SourceNode const* const child = childAt(source, key)) {
        return child;
    }
    if (key == "PHYS-CONSTRS") {
        return absent_ == Absent::isReported ? source.child("INTERNAL-CONSTRS") : nullptr;
    }
    const std::string_view name = std::string_view(key).substr(0, key.find('/'));
    return onlyChild(before, name) == nullptr ? nullptr : onlyChild(source, name);
}

void ElementEditor::changeChildren(Side const& before,
                                   Side const& after,
                                   SourceNode const& source) {
    const std::vector<std::optional<std::size_t>> partner = pairs(before.node, after.node);
    const std::vector<std::string> keys = keysOf(before.node);
    std::vector<SourceNode const*> counterpart(after.node.children.size());
    std::vector<bool> isNew(after.node.children.size(), true);
    std::vector<SourceNode const*> gone;
    for (std::size_t i = 0; i < keys.size(); ++i) {
        SourceNode const& old = before.node.children[i];
        SourceNode const* const written = counterpartOf(before.node, keys[i], source);
        if (!partner[i]) {
            if (written != nullptr) {
                remove(*written);
                gone.push_back(written);
            }
            continue;
        }
        SourceNode const& now = after.node.children[*partner[i]];
        isNew[*partner[i]] = false;
        counterpart[*partner[i]] = written;
        if (of(before.text, old) == of(after.text, now)) {
            continue;
        }
        if (written == nullptr && absent_ == Absent::isInserted) {
            isNew[*partner[i]] = true;
            continue;
        }
        if (written == nullptr || written->name != old.name) {
            missing_.push_back("<" + std::string(source.name) + "> has no " + keys[i]);
        }
        if (written != nullptr) {
            changeNode({before.text, old}, {after.text, now}, *written);
        }
    }
    const std::vector<std::string> newKeys = keysOf(after.node);
    SourceNode const* behind = nullptr;
    for (std::size_t i = 0; i < after.node.children.size(); ++i) {
        SourceNode const& child = after.node.children[i];
        SourceNode const* const there = isNew[i] ? childAt(source, newKeys[i]) : nullptr;
        const bool isFree =
            there != nullptr && std::find(gone.begin(), gone.end(), there) == gone.end() &&
            std::find(counterpart.begin(), counterpart.end(), there) == counterpart.end();
        if (isFree) {
            bringTo({after.text, child}, *there);
            behind = there;
        } else if (isNew[i]) {
            insert(source, placeFor(source, child.name, gone, behind), of(after.text, child));
        } else if (counterpart[i] != nullptr) {
            behind = counterpart[i];
        }
    }
}

/// Of what stands in the file though the writer left it out before, as it does with what a reader
/// takes for granted. What else is in it stays.
void ElementEditor::bringTo(Side const& after, SourceNode const& source) {
    changeTag(file_.substr(source.begin, source.content - source.begin),
              after.text.substr(after.node.begin, after.node.content - after.node.begin),
              source);
    if (after.node.children.empty()) {
        changeText(source.text, after.node.text, source);
        return;
    }
    const std::vector<std::string> keys = keysOf(after.node);
    SourceNode const* behind = nullptr;
    for (std::size_t i = 0; i < keys.size(); ++i) {
        SourceNode const& child = after.node.children[i];
        if (SourceNode const* const there = childAt(source, keys[i])) {
            bringTo({after.text, child}, *there);
            behind = there;
        } else {
            insert(source, placeFor(source, child.name, {}, behind), of(after.text, child));
        }
    }
}

/// Behind which child a new one is to stand: the last one that the schema has before it. Where the
/// schema leaves that open, behind the given one.
SourceNode const* ElementEditor::placeFor(SourceNode const& source,
                                          std::string_view name,
                                          std::vector<SourceNode const*> const& gone,
                                          SourceNode const* behind) {
    const int place = placeInElement(source.name, name);
    if (place < 0) {
        return behind;
    }
    SourceNode const* last = nullptr;
    for (SourceNode const& child : source.children) {
        const int other = placeInElement(source.name, child.name);
        const bool isGone = std::find(gone.begin(), gone.end(), &child) != gone.end();
        if (!isGone && other >= 0 && other <= place) {
            last = &child;
        }
    }
    return last != nullptr ? last : behind;
}

/// The blanks before an element, if nothing else is in its line.
std::string_view ElementEditor::indentAt(std::size_t begin) const {
    std::size_t line = begin;
    while (line > 0 && (file_[line - 1] == ' ' || file_[line - 1] == '\t')) {
        --line;
    }
    return file_.substr(line, begin - line);
}

void ElementEditor::remove(SourceNode const& source) {
    std::size_t begin = source.begin - indentAt(source.begin).size();
    std::size_t end = source.end;
    const bool isAlone = begin == 0 || file_[begin - 1] == '\n';
    if (isAlone && file_.substr(end, lineEnd_.size()) == lineEnd_) {
        end += lineEnd_.size();
    } else {
        begin = source.begin;
    }
    edits_.push_back({begin, end, {}});
}

/// A text of lines with two blanks a step, moved to where it is to stand.
std::string ElementEditor::indented(std::string_view text, std::string_view indent) const {
    std::string result;
    const std::size_t own =
        text.rfind('\n') == std::string_view::npos
            ? 0
            : text.find_first_not_of(' ', text.rfind('\n') + 1) - (text.rfind('\n') + 1);
    bool isFirst = true;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        std::string_view line = text.substr(0, end);
        if (!isFirst) {
            line.remove_prefix(std::min(own, line.size()));
            result += lineEnd_;
        }
        result += indent;
        result += line;
        isFirst = false;
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return result;
}

/// The end of an element, or of the comment that follows it in its line.
std::size_t ElementEditor::endWithComment(std::size_t end) const {
    const std::string_view line = file_.substr(end, file_.find('\n', end) - end);
    const std::size_t begin = line.find_first_not_of(" \t");
    const std::size_t close = line.rfind("-->");
    const bool isComment = begin != std::string_view::npos && line.compare(begin, 4, "<!--") == 0 &&
                           close != std::string_view::npos &&
                           line.find_first_not_of(" \t\r", close + 3) == std::string_view::npos;
    return isComment ? end + close + 3 : end;
}

void ElementEditor::insert(SourceNode const& source,
                           SourceNode const* behind,
                           std::string_view text) {
    if (source.isEmptyTag()) {
        missing_.push_back("<" + std::string(source.name) + "/> is written without content");
        return;
    }
    const std::size_t place = behind != nullptr ? endWithComment(behind->end) : source.content;
    const std::string indent = behind != nullptr ? std::string(indentAt(behind->begin))
                               : !source.children.empty()
                                   ? std::string(indentAt(source.children.front().begin))
                                   : std::string(indentAt(source.begin)) + "  ";
    edits_.push_back({place, place, std::string(lineEnd_) + indented(text, indent)});
}

void ElementEditor::append(SourceNode const& list, std::string_view text) {
    insert(list, list.children.empty() ? nullptr : &list.children.back(), text);
}

} // namespace velum::arxml
