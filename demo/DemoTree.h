#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace corvel {

// Thrown by an operation on the demo tree that is refused: the reason, such as "No such file or directory".
struct TreeError {
    std::string_view reason;
};

// One entry of the demo tree. A directory owns its children.
struct TreeNode {
    char type = '-';      // as the first character of a listing line: - d l c b p s
    unsigned mode = 0644; // the twelve permission bits
    std::string owner = "demo";
    std::string group = "staff";
    std::uint64_t size = 0;          // bytes
    std::string date = "Jan 5 2020"; // as a listing shows it: month, day, time of day or year
    std::string target = {};         // of a symbolic link
    std::string hiddenText = {};     // of a hidden directory: whom it is shown to; empty when not hidden
    std::map<std::string, std::unique_ptr<TreeNode>, std::less<>> children = {};
    std::size_t directoryCount = 0; // of the children that are directories
};

// Who looks at the tree, and from where. Decides permissions and what relative paths mean.
struct TreeViewer {
    std::string user = {};
    std::vector<std::string> groups = {};
    std::string directory = "/"; // absolute, without "." and ".." and links
};

// What stands at a path: the entry, the directory above it (of the root itself) and its canonical absolute
// path. The nodes belong to the tree and live until its next change.
struct TreePlace {
    TreeNode* node;
    TreeNode* parent;
    std::string path;
};

// A directory tree in memory. Names and paths are bytes; a path separates names with "/" and is relative to
// the viewer's directory unless it begins with "/". Every operation checks the permission bits of the
// directories on its way for the viewer, throws TreeError where it is refused, and has then changed nothing.
class DemoTree {
  public:
    static constexpr std::size_t longestName = 255;
    static constexpr std::size_t mostNodes = 2'000'000;

    DemoTree();

    // Puts an entry at an absolute path without asking for permission; missing directories on the way are
    // made. For filling the tree.
    void place(std::string_view path, TreeNode entry);

    // What stands at path. followLast: a link at the end of the path stands for what it points to.
    TreePlace find(const TreeViewer& viewer, std::string_view path, bool followLast) const;

    // A directory that the viewer may enter.
    TreePlace enter(const TreeViewer& viewer, std::string_view path) const;

    // Makes an empty directory of the viewer's and gives its canonical path.
    std::string makeDirectory(const TreeViewer& viewer, std::string_view path);

    // Removes an empty directory, or anything that is none. Links are removed, not followed.
    void remove(const TreeViewer& viewer, std::string_view path, bool directory);

    // Moves an entry with all below it. The new name must be free.
    void rename(const TreeViewer& viewer, std::string_view from, std::string_view to);

    // Sets the twelve permission bits of an entry that belongs to the viewer.
    void changeMode(const TreeViewer& viewer, std::string_view path, unsigned mode);

    // Gives all that belongs to an owner (field: &TreeNode::owner) or a group (&TreeNode::group) to another
    // name.
    void renameHolder(std::string TreeNode::*field, std::string_view name, std::string_view newName);

  private:
    // A directory, its path, and a name in it.
    struct Leaf {
        TreeNode* parent;
        std::string parentPath;
        std::string name;
    };
    // The directory that path's last name lies in, and that name.
    Leaf findLeaf(const TreeViewer& viewer, std::string_view path) const;

    std::unique_ptr<TreeNode> root_;
    std::size_t nodeCount_ = 1;
};

// Throws TreeError unless the viewer holds all of the wanted permissions on node: bits of 4 (read), 2
// (write), 1 (execute).
void demand(const TreeViewer& viewer, const TreeNode& node, unsigned wanted);

} // namespace corvel
