#!/usr/bin/env python3
"""Learns the weights by which outlines are judged, and writes them as a C++ header.

    judge_examples a.bin 260 700000; judge_examples b.bin 1300 5200000 small    # scenes, see examples.cpp
    learn_judge.py PageWeights.h a.bin b.bin...    # pooled with the OutlineWeights.h in use, as OutlineJudge does
    learn_judge.py --sheets OutlineWeights.h c.bin...
    learn_judge.py --second SecondWeights.h d.bin...    # judge_examples d.bin 300 7000000 second
    learn_judge.py --mean PageWeights.h A.h B.h:2  # of what was learnt at different times, the second counts twice

The weights in use: OutlineWeights.h from 48 scenes of each kind of desk, PageWeights.h the mean of what 110, 370 and,
with a map that knows sheets upon others, 400 of them and 1300 pairs of small ones gave. Each counts twice as much as
all before it. SecondWeights.h: what 600 of them gave, and, counted twice, what 300 of them and 1000 pairs of
small ones did (2015 and 2340 scenes in which no outline was convincing).

The likelihood that the right outlines, or none where none is to be found, have among all of a scene is made most
by Adam (Kingma and Ba 2015), with a small price on large weights. Four networks begin elsewhere, and each leaves
another fifth of the scenes out; their mean, which is one wider network, is written: it is right more often than
each of them (Breiman 1996; Lakshminarayanan and others 2017). Needs the packages of the group `learn`
(scripts/setup.sh).
"""
import pathlib
import re
import sys

import numpy
import torch

FACTS = 38  # evidenceCount
PAGE_FACTS = {"": 47, "--sheets": 47, "--second": 51}  # pageEvidenceCount, secondEvidenceCount
UNITS, NETWORKS, ROUNDS = 12, 4, 700  # units of each network
PRICE = 0.00015
EDGE_SHARE = 0.3  # edgeShare of OutlineJudge.cpp
ROOM = pathlib.Path(__file__).parents[2] / "platform/camera/imaging/outline"


def read(path, option):
    """The scenes of a file, each an array of one row an outline."""
    record = 2 + FACTS + PAGE_FACTS[option]
    data = numpy.fromfile(path, dtype=numpy.float32)
    counts = data.view(numpy.int32)
    scenes, at = [], 0
    while at < len(data):
        count = counts[at]
        scenes.append(data[at + 1:at + 1 + count * record].reshape(count, record))
        at += 1 + count * record
    return scenes


def weights_of(header):
    """Hidden weights, sums and bias of a header that this program wrote."""
    text = header.read_text()
    rows = [[float(number) for number in re.findall(r"(-?[0-9.]+)F", row)]
            for row in re.findall(r"\{([^{}]*F[^{}]*)\}", text)]
    bias = float(re.search(r"Bias = (-?[0-9.]+)F", text).group(1))
    return torch.tensor(rows[:-1]), torch.tensor(rows[-1]), torch.tensor([bias])


def score(weights, facts):
    hidden, sums, bias = weights
    return torch.tanh(facts @ hidden.T) @ sums + bias


class Scenes:
    """All outlines of some scenes, each scene filled up to the same number of them."""

    def __init__(self, scenes, by_sheets):
        rows = numpy.zeros((len(scenes), max(map(len, scenes)), scenes[0].shape[1]), numpy.float32)
        self.real = torch.zeros(rows.shape[:2], dtype=torch.bool)
        for i, scene in enumerate(scenes):
            rows[i, :len(scene)] = scene
            self.real[i, :len(scene)] = True
        rows = torch.from_numpy(rows)
        edges, page = rows[..., 2:2 + FACTS], rows[..., 2 + FACTS:]
        self.good = self.real & (rows[..., 0] > 0)
        if by_sheets:
            self.facts, self.share, self.known = edges, 1, 0
        else:
            share = torch.where(rows[..., 1] > 0, 1.0, EDGE_SHARE)
            self.facts, self.share = page, 1 - share
            self.known = share * score(weights_of(ROOM / "OutlineWeights.h"), edges)

    def loss(self, weights):
        """Mean negative log likelihood; "no sheet" has the score 0."""
        scores = self.known + self.share * score(weights, self.facts)
        none = torch.zeros(len(scores), 1)
        every = torch.cat([scores.masked_fill(~self.real, -1e9), none], 1).logsumexp(1)
        right = torch.where(self.good.any(1), scores.masked_fill(~self.good, -1e9).logsumexp(1), none[:, 0])
        return (every - right).mean()


def learn(scenes, draw):
    torch.manual_seed(draw)
    count = scenes.facts.shape[2]
    weights = [0.3 * torch.randn(UNITS, count), 0.3 * torch.randn(UNITS), torch.zeros(1)]
    for part in weights:
        part.requires_grad_()
    adam = torch.optim.Adam(weights)
    for turn in range(ROUNDS):
        for group in adam.param_groups:
            group["lr"] = 0.03 if turn < ROUNDS / 2 else 0.01 if turn < ROUNDS * 0.8 else 0.003
        loss = scenes.loss(weights) + PRICE * sum((part ** 2).sum() for part in weights[:2])
        adam.zero_grad()
        loss.backward()
        adam.step()
    return [part.detach() for part in weights]


def mean(networks, counts=None):
    """One network that answers the mean of theirs, of which each counts so many times."""
    counts = counts or [1] * len(networks)
    shares = [count / sum(counts) for count in counts]
    hidden, sums, biases = zip(*networks)
    return (torch.cat(hidden), torch.cat([share * part for share, part in zip(shares, sums)]),
            sum(share * bias for share, bias in zip(shares, biases)))


def write(path, weights, name, origin):
    hidden, sums, bias = weights
    count, evidence = {
        "page": ("pageEvidenceCount", "SheetEvidence.h"),
        "outline": ("evidenceCount", "SheetEvidence.h"),
        "second": ("secondEvidenceCount", "SecondEvidence.h"),
    }[name]
    numbers = lambda row: ", ".join(f"{number:.4f}F" for number in row.tolist())
    rows = "\n".join(f"    {{{numbers(row)}}}," for row in hidden)
    path.write_text(f"""#pragma once

#include "{evidence}"

#include <array>

namespace mirvak {{

// Learnt by learn_judge.py in benchmarks/outline, {origin}: a row of weights of the evidence for
// each unit of the hidden layer, then what each unit adds to the score. Not to be changed by hand.
constexpr size_t {name}Units = {len(hidden)};
constexpr std::array<std::array<float, {count}>, {name}Units> {name}Weights{{{{
{rows}
}}}};
constexpr std::array<float, {name}Units> {name}Sum{{{numbers(sums)}}};
constexpr float {name}Bias = {bias.item():.4f}F;

}} // namespace mirvak
""")


def main():
    option = sys.argv[1] if sys.argv[1].startswith("--") else ""
    header, *files = sys.argv[2:] if option else sys.argv[1:]
    if option == "--mean":
        parts = [file.partition(":") for file in files]
        networks = [weights_of(pathlib.Path(file)) for file, _, _ in parts]
        name = "second" if "second" in pathlib.Path(parts[0][0]).read_text() else "page"
        write(pathlib.Path(header), mean(networks, [int(count or 1) for _, _, count in parts]), name, "at two times")
        return
    by_sheets = option == "--sheets"
    every = [scene for file in files for scene in read(file, option)]
    networks = []
    for own in range(NETWORKS):
        used = Scenes([scene for i, scene in enumerate(every) if i % 5 != own], by_sheets)
        aside = Scenes(every[own::5], by_sheets)
        networks.append(learn(used, own))
        print(f"loss {used.loss(networks[-1]).item():.4f}, aside {aside.loss(networks[-1]).item():.4f}", flush=True)
    name = {"": "page", "--sheets": "outline", "--second": "second"}[option]
    write(pathlib.Path(header), mean(networks), name, f"{len(every)} scenes")


if __name__ == "__main__":
    main()
