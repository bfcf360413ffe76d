// The table of a report: sorts by a column, filters, and shows a part of the rows at a time. The address's fragment holds
// what is asked for, so that a link leads to it: #sort=decoyed&order=descending&filter=flares>2
"use strict";
(() => {
  const data = JSON.parse(document.getElementById("data").textContent);
  const kRowsShown = 50;
  const table = document.querySelector("table.runs");
  const filterBox = document.getElementById("filter");
  const status = document.getElementById("count");
  const body = table.tBodies[0];
  const headings = [...table.tHead.rows[0].cells];
  const previous = document.getElementById("previous");
  const next = document.getElementById("next");
  const lowered = data.columns.map((column) =>
    column.isText ? column.values.map((value) => (value === null ? "" : value.toLowerCase())) : null);
  const all = Uint32Array.from(data.columns[0].values, (_, row) => row);
  let order = all;
  let shown = all;
  let first = 0;
  let sortedBy = -1;
  let isAscending = true;

  // "miss<5" compares a column, whose name may be cut short; other words are looked for in the texts.
  const columnNamed = (name) => {
    const names = data.columns.map((column) => column.name);
    const exact = names.indexOf(name);
    return exact >= 0 ? exact : names.findIndex((other) => other.startsWith(name));
  };
  const compares = {
    "<": (a, b) => a < b, "<=": (a, b) => a <= b, ">": (a, b) => a > b, ">=": (a, b) => a >= b,
    "=": (a, b) => a === b, "!=": (a, b) => a !== b,
  };
  const testOf = (word) => {
    const parts = /^(\w+)(<=|>=|!=|<|>|=)(.*)$/u.exec(word);
    const column = parts === null ? -1 : columnNamed(parts[1]);
    if (column < 0) {
      const text = word.toLowerCase();
      return (row) => lowered.some((texts) => texts !== null && texts[row].includes(text));
    }
    const compare = compares[parts[2]];
    if (lowered[column] !== null) {
      const text = parts[3].toLowerCase();
      return (row) => compare(lowered[column][row], text);
    }
    const number = parts[3] === "" ? null : Number(parts[3]);
    const values = data.columns[column].values;
    if (number === null)
      return (row) => compare(values[row], null);
    return (row) => values[row] !== null && compare(values[row], number);
  };

  const sort = () => {
    if (sortedBy < 0) {
      order = all;
      return;
    }
    const { values, isText } = data.columns[sortedBy];
    const sign = isAscending ? 1 : -1;
    const compare = isText ? (a, b) => (a < b ? -1 : a > b ? 1 : 0) : (a, b) => a - b;
    // What is undefined comes last either way; equal rows keep the order of their paths.
    order = Uint32Array.from(all).sort((a, b) => {
      if (values[a] === null || values[b] === null)
        return (values[a] === null) - (values[b] === null) || a - b;
      return sign * compare(values[a], values[b]) || a - b;
    });
  };

  const draw = () => {
    const rows = document.createDocumentFragment();
    for (const row of shown.subarray(first, first + kRowsShown)) {
      const line = document.createElement("tr");
      for (const column of data.columns) {
        const cell = document.createElement("td");
        const value = column.values[row];
        cell.textContent = value === null ? "" : value;
        if (column.isText) {
          cell.className = "text";
          cell.title = cell.textContent;
        }
        line.append(cell);
      }
      rows.append(line);
    }
    body.replaceChildren(rows);
    headings.forEach((heading, column) => {
      heading.setAttribute("aria-sort", column !== sortedBy ? "none" : isAscending ? "ascending" : "descending");
    });
    const last = Math.min(first + kRowsShown, shown.length);
    status.textContent = shown.length === 0 ? "no run" : `${first + 1} to ${last} of ${shown.length} runs`;
    previous.disabled = first === 0;
    next.disabled = last >= shown.length;
  };

  const update = () => {
    sort();
    const tests = filterBox.value.split(/\s+/u).filter((word) => word !== "").map(testOf);
    shown = tests.length === 0 ? order : order.filter((row) => tests.every((test) => test(row)));
    first = 0;
    draw();
  };

  const readAddress = () => {
    const asked = new URLSearchParams(location.hash.slice(1));
    if (![...asked.keys()].some((key) => key === "sort" || key === "filter"))
      return false;
    sortedBy = asked.has("sort") ? columnNamed(asked.get("sort")) : -1;
    isAscending = asked.get("order") !== "descending";
    filterBox.value = asked.get("filter") ?? "";
    return true;
  };

  headings.forEach((heading, column) => heading.firstElementChild.addEventListener("click", () => {
    isAscending = sortedBy === column ? !isAscending : true;
    sortedBy = column;
    update();
  }));
  let waiting = 0;
  filterBox.addEventListener("input", () => {
    clearTimeout(waiting);
    waiting = setTimeout(update, 120);
  });
  previous.addEventListener("click", () => { first = Math.max(0, first - kRowsShown); draw(); });
  next.addEventListener("click", () => { first += kRowsShown; draw(); });
  // A bar of the histogram stands for its runs.
  for (const bar of document.querySelectorAll("[data-filter]"))
    bar.addEventListener("click", () => {
      filterBox.value = bar.dataset.filter;
      update();
      table.closest("section").scrollIntoView();
    });
  addEventListener("hashchange", () => { if (readAddress()) update(); });
  if (!readAddress()) {
    sortedBy = columnNamed(data.column);
    isAscending = data.isLeastWorst;
  }
  update();
})();
