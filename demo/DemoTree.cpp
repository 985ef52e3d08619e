#include "demo/DemoTree.h"

#include "common/Text.h"

#include <algorithm>
#include <utility>

namespace corvel {

namespace {

constexpr int mostLinks = 16;
constexpr unsigned writeBit = 2;
constexpr unsigned executeBit = 1;

// The date of whatever is made while the server runs: fixed, so that two runs give the same listings.
constexpr std::string_view newEntryDate = "Jun 14 09:30";

constexpr std::string_view notFound = "No such file or directory";
constexpr std::string_view notDirectory = "Not a directory";
constexpr std::string_view exists = "File exists";
constexpr std::string_view nameTooLong = "File name too long";
constexpr std::string_view invalid = "Invalid argument";

struct Step {
    std::string name;
    TreeNode* node = nullptr;
};

// The names of a path with the first one last, so that a link's target is put in front of the rest cheaply.
void pushNames(std::vector<std::string>& pending, std::string_view path) {
    const std::vector<std::string_view> names = split(path, "/");
    pending.insert(pending.end(), names.rbegin(), names.rend());
}

std::string joinPath(std::string_view directory, std::string_view name) {
    std::string path(directory);
    path.append(path.ends_with('/') ? "" : "/");
    return path.append(name);
}

TreeNode& attach(TreeNode& parent, std::string_view name, std::unique_ptr<TreeNode> node) {
    parent.directoryCount += node->type == 'd' ? 1 : 0;
    return *parent.children.emplace(name, std::move(node)).first->second;
}

std::unique_ptr<TreeNode> detach(TreeNode& parent, std::string_view name) {
    std::unique_ptr<TreeNode> node = std::move(parent.children.extract(parent.children.find(name)).mapped());
    parent.directoryCount -= node->type == 'd' ? 1 : 0;
    return node;
}

std::unique_ptr<TreeNode> newDirectory() {
    return std::make_unique<TreeNode>(TreeNode{.type = 'd', .mode = 0775, .size = 4096});
}

} // namespace

void demand(const TreeViewer& viewer, const TreeNode& node, unsigned wanted) {
    unsigned granted = node.mode;
    if (node.owner == viewer.user) {
        granted >>= 6;
    } else if (std::ranges::find(viewer.groups, node.group) != viewer.groups.end()) {
        granted >>= 3;
    }
    if ((granted & wanted) != wanted) {
        throw TreeError{"Permission denied"};
    }
}

DemoTree::DemoTree() : root_(newDirectory()) {}

void DemoTree::place(std::string_view path, TreeNode entry) {
    TreeNode* here = root_.get();
    std::vector<std::string_view> names = split(path.substr(1), "/");
    const std::string_view last = names.back();
    names.pop_back();
    for (const std::string_view name : names) {
        const auto found = here->children.find(name);
        nodeCount_ += found == here->children.end() ? 1 : 0;
        here = found == here->children.end() ? &attach(*here, name, newDirectory()) : found->second.get();
    }
    attach(*here, last, std::make_unique<TreeNode>(std::move(entry)));
    ++nodeCount_;
}

TreePlace DemoTree::find(const TreeViewer& viewer, std::string_view path, bool followLast) const {
    std::vector<Step> steps = {{"", root_.get()}}; // the way that was come, for ".."
    std::vector<std::string> pending;
    int linkCount = 0;
    pushNames(pending, path);
    if (!path.starts_with('/')) {
        pushNames(pending, viewer.directory);
    }
    while (!pending.empty()) {
        const std::string name = std::move(pending.back());
        pending.pop_back();
        const TreeNode& here = *steps.back().node;
        if (here.type != 'd') {
            throw TreeError{notDirectory};
        }
        if (name.empty() || name == ".") {
            continue;
        }
        if (name == "..") {
            steps.resize(std::max<std::size_t>(steps.size() - 1, 1));
            continue;
        }
        demand(viewer, here, executeBit);
        const auto found = here.children.find(name);
        if (found == here.children.end()) {
            throw TreeError{name.size() > longestName ? nameTooLong : notFound};
        }
        TreeNode& child = *found->second;
        if (child.type != 'l' || (pending.empty() && !followLast)) {
            steps.push_back({name, &child});
            continue;
        }
        if (++linkCount > mostLinks) {
            throw TreeError{"Too many levels of symbolic links"};
        }
        steps.resize(child.target.starts_with('/') ? 1 : steps.size());
        pushNames(pending, child.target);
    }
    std::string canonical;
    for (std::size_t i = 1; i < steps.size(); ++i) {
        canonical += '/' + steps[i].name;
    }
    TreeNode* const parent = steps[std::max<std::size_t>(steps.size(), 2) - 2].node;
    return {steps.back().node, parent, canonical.empty() ? "/" : canonical};
}

TreePlace DemoTree::enter(const TreeViewer& viewer, std::string_view path) const {
    TreePlace place = find(viewer, path, true);
    if (place.node->type != 'd') {
        throw TreeError{notDirectory};
    }
    demand(viewer, *place.node, executeBit);
    return place;
}

DemoTree::Leaf DemoTree::findLeaf(const TreeViewer& viewer, std::string_view path) const {
    while (path.size() > 1 && path.ends_with('/')) {
        path.remove_suffix(1);
    }
    const std::string_view name = path.substr(path.rfind('/') + 1);
    if (name.empty() || name == "." || name == "..") {
        throw TreeError{invalid};
    }
    const TreePlace parent = enter(viewer, path.substr(0, path.size() - name.size()));
    if (name.size() > longestName) {
        throw TreeError{nameTooLong};
    }
    return {parent.node, parent.path, std::string(name)};
}

std::string DemoTree::makeDirectory(const TreeViewer& viewer, std::string_view path) {
    const Leaf leaf = findLeaf(viewer, path);
    if (leaf.parent->children.contains(leaf.name)) {
        throw TreeError{exists};
    }
    demand(viewer, *leaf.parent, writeBit);
    if (nodeCount_ >= mostNodes) {
        throw TreeError{"No space left on device"};
    }
    TreeNode& made = attach(*leaf.parent, leaf.name, newDirectory());
    made.mode = 0755;
    made.owner = viewer.user;
    made.group = viewer.groups.empty() ? "nobody" : viewer.groups.front();
    made.date = newEntryDate;
    ++nodeCount_;
    return joinPath(leaf.parentPath, leaf.name);
}

void DemoTree::remove(const TreeViewer& viewer, std::string_view path, bool directory) {
    const Leaf leaf = findLeaf(viewer, path);
    const auto found = leaf.parent->children.find(leaf.name);
    if (found == leaf.parent->children.end()) {
        throw TreeError{notFound};
    }
    if ((found->second->type == 'd') != directory) {
        throw TreeError{directory ? notDirectory : "Is a directory"};
    }
    demand(viewer, *leaf.parent, writeBit);
    if (!found->second->children.empty()) {
        throw TreeError{"Directory not empty"};
    }
    detach(*leaf.parent, leaf.name);
    --nodeCount_;
}

void DemoTree::rename(const TreeViewer& viewer, std::string_view from, std::string_view to) {
    const Leaf source = findLeaf(viewer, from);
    if (!source.parent->children.contains(source.name)) {
        throw TreeError{notFound};
    }
    const Leaf goal = findLeaf(viewer, to);
    const std::string sourcePath = joinPath(source.parentPath, source.name);
    if (joinPath(goal.parentPath, "").starts_with(sourcePath + "/")) {
        throw TreeError{invalid};
    }
    if (goal.parent->children.contains(goal.name)) {
        throw TreeError{exists};
    }
    demand(viewer, *source.parent, writeBit);
    demand(viewer, *goal.parent, writeBit);
    attach(*goal.parent, goal.name, detach(*source.parent, source.name));
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

void DemoTree::changeMode(const TreeViewer& viewer, std::string_view path, unsigned mode) {
    const TreePlace place = find(viewer, path, true);
    if (place.node->owner != viewer.user) {
        throw TreeError{"Operation not permitted"};
    }
    place.node->mode = mode & 07777U;
}

} // namespace corvel
