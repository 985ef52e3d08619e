#include "demo/DemoTree.h"

#include "common/Text.h"

#include <algorithm>
#include <array>
#include <utility>

namespace corvel {

namespace {

constexpr int mostLinks = 16;
constexpr unsigned writeBit = 2;
constexpr unsigned executeBit = 1;

// The date of whatever is made while the server runs: fixed, so that two runs give the same listings.
constexpr std::string_view newEntryDate = "Jun 14 09:30";

// The names of a path with the first one last, so that a link's target is put in front of the rest cheaply.
using PendingNames = std::vector<std::string>;

void pushNames(PendingNames& pending, std::string_view path) {
    const std::vector<std::string_view> names = split(path, "/");
    pending.insert(pending.end(), names.rbegin(), names.rend());
}

struct Step {
    std::string name;
    TreeNode* node;
};

std::string pathOf(const std::vector<Step>& steps) {
    std::string path;
    for (std::size_t i = 1; i < steps.size(); ++i) {
        path += '/' + steps[i].name;
    }
    return path.empty() ? "/" : path;
}

// One walk from the root along the pending names. It keeps the way that it came, for "..".
class Walk {
  public:
    Walk(const TreeViewer& viewer, TreeNode& root, bool followLast)
        : viewer_(viewer), steps_{{"", &root}}, followLast_(followLast) {}

    TreePlace run(std::string_view path) {
        pushNames(pending_, path);
        if (!path.starts_with("/")) {
            pushNames(pending_, viewer_.directory);
        }
        while (!pending_.empty()) {
            const std::string name = std::move(pending_.back());
            pending_.pop_back();
            if (const TreeError error = step(name); error != TreeError::none) {
                return {.error = error};
            }
        }
        return {.node = steps_.back().node, .path = pathOf(steps_)};
    }

  private:
    TreeError step(const std::string& name) {
        TreeNode& here = *steps_.back().node;
        if (here.type != 'd') {
            return TreeError::notDirectory;
        }
        if (name.empty() || name == ".") {
            return TreeError::none;
        }
        if (name == "..") {
            if (steps_.size() > 1) {
                steps_.pop_back();
            }
            return TreeError::none;
        }
        if (!isAllowed(viewer_, here, executeBit)) {
            return TreeError::denied;
        }
        const auto found = here.children.find(name);
        if (found == here.children.end()) {
            return name.size() > DemoTree::longestName ? TreeError::nameTooLong : TreeError::notFound;
        }
        TreeNode& child = *found->second;
        if (child.type == 'l' && (followLast_ || !pending_.empty())) {
            return follow(child);
        }
        steps_.push_back({name, &child});
        return TreeError::none;
    }

    TreeError follow(const TreeNode& link) {
        if (++linkCount_ > mostLinks) {
            return TreeError::tooManyLinks;
        }
        if (link.target.starts_with("/")) {
            steps_.resize(1);
        }
        pushNames(pending_, link.target);
        return TreeError::none;
    }

    const TreeViewer& viewer_;
    std::vector<Step> steps_;
    PendingNames pending_;
    bool followLast_;
    int linkCount_ = 0;
};

TreeNode directoryNode() {
    TreeNode node;
    node.type = 'd';
    node.mode = 0775;
    node.size = 4096;
    return node;
}

} // namespace

std::string_view treeErrorText(TreeError error) {
    static constexpr std::array<std::string_view, 12> texts = {
        "",
        "No such file or directory",
        "Not a directory",
        "Is a directory",
        "File exists",
        "Directory not empty",
        "Permission denied",
        "Operation not permitted",
        "File name too long",
        "Invalid argument",
        "Too many levels of symbolic links",
        "No space left on device",
    };
    return texts.at(static_cast<std::size_t>(error));
}

bool isAllowed(const TreeViewer& viewer, const TreeNode& node, unsigned wanted) {
    unsigned granted = node.mode;
    if (node.owner == viewer.user) {
        granted >>= 6;
    } else if (std::find(viewer.groups.begin(), viewer.groups.end(), node.group) != viewer.groups.end()) {
        granted >>= 3;
    }
    return (granted & wanted) == wanted;
}

std::string joinPath(std::string_view directory, std::string_view name) {
    std::string path(directory);
    if (!path.ends_with('/')) {
        path += '/';
    }
    return path.append(name);
}

DemoTree::DemoTree() : root_(std::make_unique<TreeNode>(directoryNode())) {}

void DemoTree::attach(TreeNode& parent, std::string_view name, std::unique_ptr<TreeNode> node) {
    parent.directoryCount += node->type == 'd' ? 1 : 0;
    parent.children.emplace(name, std::move(node));
}

std::unique_ptr<TreeNode> DemoTree::detach(TreeNode& parent, std::string_view name) {
    const auto found = parent.children.find(name);
    std::unique_ptr<TreeNode> node = std::move(found->second);
    parent.children.erase(found);
    parent.directoryCount -= node->type == 'd' ? 1 : 0;
    return node;
}

TreeNode& DemoTree::place(std::string_view path, TreeNode entry) {
    TreeNode* here = root_.get();
    std::vector<std::string_view> names = split(path.substr(1), "/");
    const std::string_view last = names.back();
    names.pop_back();
    for (const std::string_view name : names) {
        if (!here->children.contains(name)) {
            attach(*here, name, std::make_unique<TreeNode>(directoryNode()));
            ++nodeCount_;
        }
        here = here->children.find(name)->second.get();
    }
    attach(*here, last, std::make_unique<TreeNode>(std::move(entry)));
    ++nodeCount_;
    return *here->children.find(last)->second;
}

TreePlace DemoTree::find(const TreeViewer& viewer, std::string_view path, bool followLast) const {
    return Walk(viewer, *root_, followLast).run(path);
}

TreePlace DemoTree::enter(const TreeViewer& viewer, std::string_view path) const {
    TreePlace place = find(viewer, path, true);
    if (place.error == TreeError::none && place.node->type != 'd') {
        return {.error = TreeError::notDirectory};
    }
    if (place.error == TreeError::none && !isAllowed(viewer, *place.node, executeBit)) {
        return {.error = TreeError::denied};
    }
    return place;
}

DemoTree::Leaf DemoTree::findLeaf(const TreeViewer& viewer, std::string_view path) const {
    while (path.size() > 1 && path.ends_with('/')) {
        path.remove_suffix(1);
    }
    const std::size_t slash = path.rfind('/');
    const std::string_view name = slash == std::string_view::npos ? path : path.substr(slash + 1);
    if (name.empty() || name == "." || name == "..") {
        return {.error = TreeError::invalid, .parent = {}, .name = {}};
    }
    Leaf leaf;
    leaf.name = name;
    leaf.parent = enter(viewer, path.substr(0, path.size() - name.size()));
    leaf.error = leaf.parent.error;
    if (leaf.error == TreeError::none && name.size() > longestName) {
        leaf.error = TreeError::nameTooLong;
    }
    return leaf;
}

TreePlace DemoTree::makeDirectory(const TreeViewer& viewer, std::string_view path) {
    const Leaf leaf = findLeaf(viewer, path);
    if (leaf.error != TreeError::none) {
        return {.error = leaf.error};
    }
    TreeNode& parent = *leaf.parent.node;
    if (parent.children.contains(leaf.name)) {
        return {.error = TreeError::exists};
    }
    if (!isAllowed(viewer, parent, writeBit)) {
        return {.error = TreeError::denied};
    }
    if (nodeCount_ >= mostNodes) {
        return {.error = TreeError::full};
    }
    auto node = std::make_unique<TreeNode>(directoryNode());
    node->mode = 0755;
    node->owner = viewer.user;
    node->group = viewer.groups.empty() ? "nobody" : viewer.groups.front();
    node->date = newEntryDate;
    TreeNode* made = node.get();
    attach(parent, leaf.name, std::move(node));
    ++nodeCount_;
    return {.node = made, .path = joinPath(leaf.parent.path, leaf.name)};
}

TreeError DemoTree::remove(const TreeViewer& viewer, std::string_view path, bool directory) {
    const Leaf leaf = findLeaf(viewer, path);
    if (leaf.error != TreeError::none) {
        return leaf.error;
    }
    TreeNode& parent = *leaf.parent.node;
    const auto found = parent.children.find(leaf.name);
    if (found == parent.children.end()) {
        return TreeError::notFound;
    }
    const bool isDirectory = found->second->type == 'd';
    if (isDirectory != directory) {
        return directory ? TreeError::notDirectory : TreeError::isDirectory;
    }
    if (!isAllowed(viewer, parent, writeBit)) {
        return TreeError::denied;
    }
    if (!found->second->children.empty()) {
        return TreeError::notEmpty;
    }
    detach(parent, leaf.name);
    --nodeCount_;
    return TreeError::none;
}

TreeError DemoTree::removeDirectory(const TreeViewer& viewer, std::string_view path) {
    return remove(viewer, path, true);
}

TreeError DemoTree::removeFile(const TreeViewer& viewer, std::string_view path) {
    return remove(viewer, path, false);
}

TreeError DemoTree::rename(const TreeViewer& viewer, std::string_view from, std::string_view to) {
    const Leaf source = findLeaf(viewer, from);
    if (source.error != TreeError::none) {
        return source.error;
    }
    if (!source.parent.node->children.contains(source.name)) {
        return TreeError::notFound;
    }
    const Leaf goal = findLeaf(viewer, to);
    if (goal.error != TreeError::none) {
        return goal.error;
    }
    const std::string sourcePath = joinPath(source.parent.path, source.name);
    if (joinPath(goal.parent.path, "").starts_with(sourcePath + "/")) {
        return TreeError::invalid;
    }
    if (goal.parent.node->children.contains(goal.name)) {
        return TreeError::exists;
    }
    if (!isAllowed(viewer, *source.parent.node, writeBit) ||
        !isAllowed(viewer, *goal.parent.node, writeBit)) {
        return TreeError::denied;
    }
    attach(*goal.parent.node, goal.name, detach(*source.parent.node, source.name));
    return TreeError::none;
}

void DemoTree::renameHolder(std::string TreeNode::*field, std::string_view name, std::string_view newName) {
    std::vector<TreeNode*> pending = {root_.get()};
    while (!pending.empty()) {
        TreeNode& node = *pending.back();
        pending.pop_back();
        if (node.*field == name) {
            node.*field = newName;
        }
        for (const auto& [childName, child] : node.children) {
            pending.push_back(child.get());
        }
    }
}

TreeError DemoTree::changeMode(const TreeViewer& viewer, std::string_view path, unsigned mode) {
    const TreePlace place = find(viewer, path, true);
    if (place.error != TreeError::none) {
        return place.error;
    }
    if (place.node->owner != viewer.user) {
        return TreeError::notPermitted;
    }
    place.node->mode = mode & 07777U;
    return TreeError::none;
}

} // namespace corvel
