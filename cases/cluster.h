#pragma once

#include <QString>
#include <QStringList>

#include <cstddef>
#include <filesystem>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

/// Job arrays of a cluster that Slurm rules: one task a case.
namespace cases {

/// One sentence about what the cluster refused or can't do.
class CClusterError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// One array of the cluster; task `i` of it is case `first + i`.
struct SCaseArray
{
    QString id;
    std::size_t first = 0;
    QString tasks; ///< as the array's list has them
};

/// What the cluster says of the task of a case.
struct STaskState
{
    QString job;    ///< "12_3"
    QString state;  ///< "PENDING", "RUNNING", ...
    QString node;   ///< empty while it waits
    QString reason; ///< why it waits
};

struct SSubmission
{
    std::filesystem::path caseRoot;   ///< absolute
    std::vector<std::size_t> numbers; ///< ascending
    std::size_t atATime = 0;          ///< 0: as many as the cluster likes
    QStringList options;              ///< for sbatch
    std::string simulator;            ///< empty: as the batch file has it
};

/// The size from which on an array's list is refused: its greatest task is one less. Throws
/// CClusterError.
std::size_t maxArraySize();

/// The script of every task; its first argument is the case of task 0.
std::string taskScript(const SSubmission& submission);

/// The arguments of sbatch for each array, in blocks of `arraySize` case numbers. All but the first
/// wait for the one before: the limit of tasks at a time holds for the whole. `%PREVIOUS%` stands
/// where the id of the array before has to go.
std::vector<QStringList> submissionCommands(const SSubmission& submission, std::size_t arraySize);

/// Writes the script, submits and keeps the arrays' ids in the case root. Throws CClusterError.
std::vector<SCaseArray> submit(const SSubmission& submission);

/// The arrays that were submitted for a case root.
std::vector<SCaseArray> submittedArrays(const std::filesystem::path& caseRoot);

/// The waiting and running tasks of a case root by case number; none without a cluster.
std::map<std::size_t, STaskState> taskStates(const std::filesystem::path& caseRoot);

/// Cancels what waits and runs; how many tasks that were. Throws CClusterError.
std::size_t cancelTasks(const std::filesystem::path& caseRoot);

} // namespace cases
