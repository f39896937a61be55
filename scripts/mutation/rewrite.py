"""Writes all mutants of a file into one source, each behind its number."""

from mutation.find import RANK

CONSTEXPR = b"constexpr"


def runs_of(mutants):
    """Groups the swaps of one row of calls: {first extent: [mutants in order]}."""
    runs = {}
    for mutant in mutants:
        if mutant.kind == "swap":
            runs.setdefault(tuple(mutant.run), []).append(mutant)
    return runs


def wraps_of(mutants):
    """(start, end, rank, prefix, suffix) of everything that is put around a piece of text."""
    wraps = []
    for mutant in mutants:
        if mutant.kind != "swap":
            prefix, suffix = mutant.prefix.format(n=mutant.number), mutant.suffix.format(n=mutant.number)
            wraps.append((mutant.start, mutant.end, RANK[mutant.kind], prefix, suffix))
    for run, swaps in runs_of(mutants).items():
        first = swaps[0].number
        for i, (start, end) in enumerate(run):
            prefix = f"zmutant::inOrder({first}, [&] {{ " if i == 0 else ", [&] { "
            suffix = " });" if i == len(run) - 1 else " }"
            wraps.append((start, end, RANK["swap"], prefix, suffix))
    return wraps


def rewrite(source, mutants, demoted, header):
    """The source with its mutants; its lines keep their numbers. `demoted` are the offsets of the
    words `constexpr` that become `const`, so that what they stand before can be a mutant."""
    inserts = []  # (offset, order at the offset, text, bytes that are replaced)
    for start, end, rank, prefix, suffix in wraps_of(mutants):
        inserts.append((start, (1, -(end - start), rank), prefix, 0))
        inserts.append((end, (0, end - start, -rank), suffix, 0))
    for mutant in mutants:
        if mutant.comma:
            start, end = mutant.comma
            inserts.append((start, (2, 0, 0), ",", end - start))
    for offset in demoted:
        inserts.append((offset, (3, 0, 0), "const", len(CONSTEXPR)))
    inserts.sort(key=lambda i: (i[0], i[1]))
    pieces, done = [f'#include "{header}"\n#line 1\n'.encode()], 0
    for offset, _, text, replaced in inserts:
        pieces.append(source[done:offset])
        pieces.append(text.encode())
        done = offset + replaced
    pieces.append(source[done:])
    return b"".join(pieces)
