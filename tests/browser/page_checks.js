// Looks at a page from inside, reloads it once, and writes what it saw behind all else.
'use strict';
(() => {
  const wrong = [], all = what => [...document.querySelectorAll(what)];
  const expect = (held, what) => { if (!held) wrong.push(what); };
  const rows = all('tbody tr[id]'), boxes = all('.tick input');
  const stage = sessionStorage.getItem('stage');
  const tell = () => {
    const told = document.createElement('pre');
    told.id = 'told';
    told.textContent = JSON.stringify({ wrong, rows: rows.map(row => row.id) });
    document.body.append(told);
  };

  // Luminance and contrast as the accessibility guidelines count them.
  const light = color => {
    const parts = color.match(/[\d.]+/g).slice(0, 3).map(part => part / 255)
      .map(part => part <= .03928 ? part / 12.92 : ((part + .055) / 1.055) ** 2.4);
    return .2126 * parts[0] + .7152 * parts[1] + .0722 * parts[2];
  };
  const behind = element => {
    for (let one = element; one; one = one.parentElement) {
      const color = getComputedStyle(one).backgroundColor;
      if (!/, 0\)$|transparent/.test(color)) return color;
    }
    return 'rgb(255, 255, 255)';
  };
  const contrast = element => {
    const [a, b] = [light(getComputedStyle(element).color), light(behind(element))].sort((x, y) => y - x);
    return (a + .05) / (b + .05);
  };

  const look = () => {
    expect(performance.getEntriesByType('resource').length === 0, 'the page asked for something');
    expect(document.documentElement.lang === 'en' && document.title !== '', 'no language or no title');
    expect(all('h1').length === 1 && all('main').length === 1 && all('nav').length === 1, 'landmarks');
    expect(new Set(all('[id]').map(one => one.id)).size === all('[id]').length, 'two elements have one id');
    expect(all('thead th').every(head => head.scope === 'col' && head.textContent.trim()), 'a column without a heading');
    expect(rows.every(row => row.querySelectorAll('th[scope=row]').length === 1), 'a row without a heading');
    expect(boxes.length > 0 && boxes.every(box => box.getAttribute('aria-label')), 'a box without a name');
    expect(all('table').every(table => table.getAttribute('aria-label')), 'a table without a name');
    for (const kind of ['.l', '.about', '.facts dt', 'thead th', '.note b', '.tools output', 'td .m'])
      for (const one of all(kind).slice(0, 3)) expect(contrast(one) >= 4.5, 'low contrast of ' + kind + ': ' + contrast(one));
    for (const one of all('a, button, input, summary').slice(0, 200))
      expect(one.tabIndex >= 0, 'not reached by keyboard: ' + one.outerHTML.slice(0, 80));
  };

  const act = () => {
    boxes[1].click();
    expect(boxes[1].closest('tr').classList.contains('done'), 'a tick leaves its row as it was');
    const filter = document.querySelector('input[type=search]'), wanted = rows[2].querySelector('th').textContent.trim();
    filter.value = 'nothing has these words';
    filter.dispatchEvent(new Event('input'));
    setTimeout(() => {
      expect(rows.every(row => row.hidden), 'the filter leaves rows that haven\'t its words');
      filter.value = '';
      filter.dispatchEvent(new Event('input'));
      setTimeout(() => {
        expect(rows.every(row => !row.hidden), 'an empty filter hides rows');
        const menu = document.querySelector('.columns input');
        menu.click();
        const cells = [...menu.closest('section').querySelectorAll('.c' + menu.value)];
        expect(cells.length > 0 && cells.every(cell => getComputedStyle(cell).display === 'none'), 'a hidden column is seen');
        for (const button of all('tr.drawn .show').slice(0, 2)) {
          button.click();
          expect(all('figure .here').length > 0, 'a row doesn\'t show its film in the drawing');
        }
        sessionStorage.setItem('stage', JSON.stringify(wrong));
        location.reload();
      }, 300);
    }, 300);
  };

  const lookAgain = () => {
    wrong.push(...JSON.parse(stage));
    sessionStorage.removeItem('stage');
    expect(boxes[1].checked && boxes[1].closest('tr').classList.contains('done'), 'a tick is gone after a reload');
    expect(!document.querySelector('.columns input').checked, 'a hidden column is back after a reload');
    tell();
  };

  if (stage === null) {
    look();
    act();
  } else {
    lookAgain();
  }
})();
